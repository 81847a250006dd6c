/// @file
/// CZRB_DoubleList: the named list of double; declared with the other named arithmetic
/// containers.
#ifndef CZRB_DOUBLELIST_H
#define CZRB_DOUBLELIST_H

#include "CZRB_ArithmeticContainers.h"

#endif
