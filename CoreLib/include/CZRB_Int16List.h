/// @file
/// CZRB_Int16List: the named list of short; declared with the other named arithmetic
/// containers.
#ifndef CZRB_INT16LIST_H
#define CZRB_INT16LIST_H

#include "CZRB_ArithmeticContainers.h"

#endif
