/// @file
/// CZRB_Uint32List: the named list of unsigned int; declared with the other named arithmetic
/// containers.
#ifndef CZRB_UINT32LIST_H
#define CZRB_UINT32LIST_H

#include "CZRB_ArithmeticContainers.h"

#endif
