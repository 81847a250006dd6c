// LZRB_Core: includes every public header of the library.
#ifndef LZRB_CORE_H
#define LZRB_CORE_H

#include "CZRB_Exception.h"
#include "CZRB_Mutex.h"
#include "CZRB_Object.h"
#include "ZRB.h"

#endif
