/// @file
/// CZRB_Int32List: the named list of int; declared with the other named arithmetic
/// containers.
#ifndef CZRB_INT32LIST_H
#define CZRB_INT32LIST_H

#include "CZRB_ArithmeticContainers.h"

#endif
