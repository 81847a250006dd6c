// Helpers shared by the test programs of several subsystems.
#ifndef LZRB_TEST_SUPPORT_H
#define LZRB_TEST_SUPPORT_H

#include "CZRB_Exception.h"

// The code of the CZRB_Exception that `action` throws (its object to `object`), or 0.
template <class F>
unsigned int CodeOf(F action, const void** object = nullptr) {
    try {
        action();
    } catch (const CZRB_Exception& e) {
        return object ? (*object = e.object, e.code) : e.code;
    }
    return 0;
}

#endif
