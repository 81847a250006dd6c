/// @file
/// CZRB_FloatVector: the named vector of float; declared with the other named arithmetic
/// containers.
#ifndef CZRB_FLOATVECTOR_H
#define CZRB_FLOATVECTOR_H

#include "CZRB_ArithmeticContainers.h"

#endif
