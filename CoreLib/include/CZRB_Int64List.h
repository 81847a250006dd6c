/// @file
/// CZRB_Int64List: the named list of __int64; declared with the other named arithmetic
/// containers.
#ifndef CZRB_INT64LIST_H
#define CZRB_INT64LIST_H

#include "CZRB_ArithmeticContainers.h"

#endif
