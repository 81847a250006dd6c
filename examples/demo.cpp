// Shows the library at work: each subsystem contributes one section.
#include "demo_sections.h"

#include <cstdio>

int main() {
    DemoFoundation();
    DemoStrings();
    DemoContainers();
    DemoBitSet();
    DemoDates();
    DemoDecimal();
    DemoCrc();
    DemoFiles();
    DemoSmallValues();
    std::puts("\nDemo finished.");
    return 0;
}
