/// @file
/// CZRB_Uint64Vector: the named vector of unsigned __int64; declared with the other named
/// arithmetic containers.
#ifndef CZRB_UINT64VECTOR_H
#define CZRB_UINT64VECTOR_H

#include "CZRB_ArithmeticContainers.h"

#endif
