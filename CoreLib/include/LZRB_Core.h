// LZRB_Core: includes every public header of the library.
#ifndef LZRB_CORE_H
#define LZRB_CORE_H

#include "ZRB.h"
#include "CZRB_Exception.h"
#include "CZRB_Mutex.h"
#include "CZRB_Object.h"

#endif
