// Shows the library at work: each subsystem contributes one section.
#include "demo_sections.h"

#include <cstdio>

int main() {
    DemoFoundation();
    std::puts("");
    DemoContainers();
    std::puts("");
    DemoStrings();
    std::puts("");
    DemoCrc();
    std::puts("");
    DemoBitSet();
    std::puts("");
    DemoDecimal();
    std::puts("");
    DemoDates();
    std::puts("");
    DemoFiles();
    std::puts("");
    DemoSmallValues();
    std::puts("\nDemo finished.");
    return 0;
}
