/// @file
/// CZRB_Uint16List: the named list of unsigned short; declared with the other named arithmetic
/// containers.
#ifndef CZRB_UINT16LIST_H
#define CZRB_UINT16LIST_H

#include "CZRB_ArithmeticContainers.h"

#endif
