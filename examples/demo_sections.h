// One function per subsystem section of the demo.
#ifndef LZRB_DEMO_SECTIONS_H
#define LZRB_DEMO_SECTIONS_H

void DemoFoundation();
void DemoStrings();
void DemoContainers();
void DemoBitSet();
void DemoDates();
void DemoDecimal();
void DemoCrc();
void DemoFiles();
void DemoSmallValues();

#endif
