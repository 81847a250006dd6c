/// @file
/// CZRB_Uint16Vector: the named vector of unsigned short; declared with the other named arithmetic
/// containers.
#ifndef CZRB_UINT16VECTOR_H
#define CZRB_UINT16VECTOR_H

#include "CZRB_ArithmeticContainers.h"

#endif
