/// @file
/// CZRB_Int8Vector: the named vector of signed char; declared with the other named arithmetic
/// containers.
#ifndef CZRB_INT8VECTOR_H
#define CZRB_INT8VECTOR_H

#include "CZRB_ArithmeticContainers.h"

#endif
