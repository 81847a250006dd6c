/// @file
/// CZRB_Uint32Vector: the named vector of unsigned int; declared with the other named arithmetic
/// containers.
#ifndef CZRB_UINT32VECTOR_H
#define CZRB_UINT32VECTOR_H

#include "CZRB_ArithmeticContainers.h"

#endif
