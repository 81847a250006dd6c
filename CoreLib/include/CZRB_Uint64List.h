/// @file
/// CZRB_Uint64List: the named list of unsigned __int64; declared with the other named arithmetic
/// containers.
#ifndef CZRB_UINT64LIST_H
#define CZRB_UINT64LIST_H

#include "CZRB_ArithmeticContainers.h"

#endif
