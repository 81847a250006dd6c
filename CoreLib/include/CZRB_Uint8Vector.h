/// @file
/// CZRB_Uint8Vector: the named vector of unsigned char; declared with the other named arithmetic
/// containers.
#ifndef CZRB_UINT8VECTOR_H
#define CZRB_UINT8VECTOR_H

#include "CZRB_ArithmeticContainers.h"

#endif
