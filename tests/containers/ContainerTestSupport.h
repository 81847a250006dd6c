// Helpers shared by the container tests.
#ifndef LZRB_CONTAINER_TEST_SUPPORT_H
#define LZRB_CONTAINER_TEST_SUPPORT_H

#include "CZRB_Exception.h"

#include <gtest/gtest.h>

// The code of the CZRB_Exception that action throws (0 when it throws none); with an
// object, it must also be the one reported.
template <class F>
unsigned int CodeOf(F action, const void* object = nullptr) {
    try {
        action();
    } catch (const CZRB_Exception& e) {
        EXPECT_TRUE(object == nullptr || e.object == object) << "code " << e.code;
        return e.code;
    }
    return 0;
}

inline signed char CompareInts(const int& a, const int& b) {
    return static_cast<signed char>(a > b ? 1 : (a < b ? -1 : 0));
}

#endif
