#include "CZRB_Exception.h"
#include "CZRB_Object.h"

#include <gtest/gtest.h>

#include <memory>

TEST(Exception, DefaultIsAllZeroAndCopiesKeepEveryMember) {
    const CZRB_Exception empty;
    EXPECT_TRUE(empty.code == 0 && empty.object == nullptr && empty.detail == 0);
    int marker = 0;
    const CZRB_Exception original(32, &marker, 0x123456789ABULL);
    const CZRB_Exception copy(original);
    EXPECT_TRUE(copy.code == 32 && copy.object == &marker && copy.detail == 0x123456789ABULL);
}

namespace {
struct Derived : CZRB_Object {
    int value = 0;
};
} // namespace

TEST(Object, BaseAssignmentCopiesNothingAndDynamicCastWorks) {
    Derived a;
    Derived b;
    a.value = 1;
    b.value = 2;
    static_cast<CZRB_Object&>(a) = static_cast<const CZRB_Object&>(b);
    EXPECT_EQ(a.value, 1);

    std::unique_ptr<CZRB_Object> base = std::make_unique<Derived>();
    EXPECT_NE(dynamic_cast<Derived*>(base.get()), nullptr);
}
