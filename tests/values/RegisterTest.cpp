#include "CZRB_Register.h"

#include <gtest/gtest.h>

namespace {
// Opens the flag bytes to the test.
struct FlaggedRegister : CZRB_Register {
    int Flags() const { return m_userFlag0 * 256 + m_userFlag1; }
    void SetFlags(unsigned char a, unsigned char b) { m_userFlag0 = a, m_userFlag1 = b; }
};
} // namespace

TEST(RegisterTest, FieldsClampResetAndCopy) {
    FlaggedRegister reg;
    EXPECT_EQ(reg.GetNumBits(), 64u);
    EXPECT_EQ(reg.GetField(0, 64) | reg.GetField(63, 1), 0u);
    reg.SetField(60, 8, 0xFF).SetField(64, 8, 0xFF).SetField(255, 255, 0xFF);
    EXPECT_EQ(reg.GetField(60, 8), 0xFu);
    EXPECT_EQ(reg.ToUnsigned(), 0xF000000000000000ULL);
    reg.SetField(0, 255, ~0ULL);
    EXPECT_EQ(reg.GetField(0, 255), ~0ULL);
    EXPECT_EQ(reg.GetField(64, 1) | reg.GetField(200, 8) | reg.GetField(8, 0), 0u);
    reg.SetField(4, 8, 0x1A5); // the value is cut to the width
    EXPECT_EQ(reg.GetField(0, 16), 0xFA5Fu);

    reg.SetFlags(7, 9);
    FlaggedRegister assigned;
    static_cast<CZRB_Register&>(assigned) = reg;
    EXPECT_EQ(assigned.Flags(), 7 * 256 + 9);
    EXPECT_EQ(CZRB_Register(reg).GetField(0, 16), 0xFA5Fu);
    reg.Reset();
    EXPECT_TRUE(reg.Flags() == 0 && reg.ToUnsigned() == 0 && reg.GetNumBits() == 64);
}
