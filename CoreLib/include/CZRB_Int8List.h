/// @file
/// CZRB_Int8List: the named list of signed char; declared with the other named arithmetic
/// containers.
#ifndef CZRB_INT8LIST_H
#define CZRB_INT8LIST_H

#include "CZRB_ArithmeticContainers.h"

#endif
