/// @file
/// CZRB_Uint8List: the named list of unsigned char; declared with the other named arithmetic
/// containers.
#ifndef CZRB_UINT8LIST_H
#define CZRB_UINT8LIST_H

#include "CZRB_ArithmeticContainers.h"

#endif
