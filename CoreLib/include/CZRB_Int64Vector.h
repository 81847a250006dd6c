/// @file
/// CZRB_Int64Vector: the named vector of __int64; declared with the other named arithmetic
/// containers.
#ifndef CZRB_INT64VECTOR_H
#define CZRB_INT64VECTOR_H

#include "CZRB_ArithmeticContainers.h"

#endif
