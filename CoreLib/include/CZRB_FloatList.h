/// @file
/// CZRB_FloatList: the named list of float; declared with the other named arithmetic
/// containers.
#ifndef CZRB_FLOATLIST_H
#define CZRB_FLOATLIST_H

#include "CZRB_ArithmeticContainers.h"

#endif
