/// @file
/// CZRB_DoubleVector: the named vector of double; declared with the other named arithmetic
/// containers.
#ifndef CZRB_DOUBLEVECTOR_H
#define CZRB_DOUBLEVECTOR_H

#include "CZRB_ArithmeticContainers.h"

#endif
