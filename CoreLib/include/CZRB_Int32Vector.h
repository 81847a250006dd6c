/// @file
/// CZRB_Int32Vector: the named vector of int; declared with the other named arithmetic
/// containers.
#ifndef CZRB_INT32VECTOR_H
#define CZRB_INT32VECTOR_H

#include "CZRB_ArithmeticContainers.h"

#endif
