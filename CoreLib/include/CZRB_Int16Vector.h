/// @file
/// CZRB_Int16Vector: the named vector of short; declared with the other named arithmetic
/// containers.
#ifndef CZRB_INT16VECTOR_H
#define CZRB_INT16VECTOR_H

#include "CZRB_ArithmeticContainers.h"

#endif
