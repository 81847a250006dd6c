#include "CZRB_Register.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

namespace {

// Opens the flag bytes to the test.
class FlaggedRegister : public CZRB_Register {
public:
    void SetFlags(unsigned char a, unsigned char b) {
        m_userFlag0 = a;
        m_userFlag1 = b;
    }
    int Flags() const { return m_userFlag0 * 256 + m_userFlag1; }
};

} // namespace

TEST(RegisterTest, FieldsAreClampedToSixtyFourBits) {
    CZRB_Register reg;
    EXPECT_EQ(reg.GetNumBits(), 64u);
    for (unsigned char position : {0, 31, 63, 64, 200}) {
        EXPECT_EQ(reg.GetField(position, 64), 0u);
    }
    reg.SetField(60, 8, 0xFF);
    EXPECT_EQ(reg.GetField(60, 8), 0xFu);
    EXPECT_EQ(reg.ToUnsigned(), 0xF000000000000000ULL);
    reg.SetField(64, 8, 0xFF).SetField(255, 255, 0xFF);
    EXPECT_EQ(reg.ToUnsigned(), 0xF000000000000000ULL);
    reg.SetField(0, 255, ~0ULL);
    EXPECT_EQ(reg.GetField(0, 255), ~0ULL);
    EXPECT_EQ(reg.GetField(64, 1), 0u);
    reg.SetField(4, 8, 0x1A5); // the value is cut to the width
    EXPECT_EQ(reg.GetField(0, 16), 0xFA5Fu);
    EXPECT_EQ(reg.GetField(8, 0), 0u);

    FlaggedRegister flagged;
    flagged.SetField(3, 5, 0x1F);
    flagged.SetFlags(7, 9);
    CZRB_Register copy(flagged);
    EXPECT_EQ(copy.GetField(0, 64), 0xF8u);
    FlaggedRegister assigned;
    static_cast<CZRB_Register&>(assigned) = flagged;
    EXPECT_EQ(assigned.Flags(), 7 * 256 + 9);
    EXPECT_EQ(assigned.GetField(0, 64), 0xF8u);
    flagged.Reset();
    EXPECT_EQ(flagged.Flags(), 0);
    EXPECT_EQ(flagged.ToUnsigned(), 0u);
    EXPECT_EQ(flagged.GetNumBits(), 64u);
}

// Copies share one mutex: a thread working on the copy and one on the source exclude each
// other, and what the copy locked the source can unlock.
TEST(RegisterTest, CopiesShareTheMutexAcrossThreads) {
    CZRB_Register source;
    CZRB_Register copy(source);
    long counter = 0;
    auto work = [&counter](CZRB_Register& reg) {
        for (int i = 0; i < 20000; ++i) {
            reg.Lock();
            reg.Lock(); // recursive for its owner
            counter = counter + 1;
            reg.Unlock();
            reg.Unlock();
        }
    };
    std::thread first(work, std::ref(source));
    std::thread second(work, std::ref(copy));
    first.join();
    second.join();
    EXPECT_EQ(counter, 40000);

    CZRB_Register assigned;
    assigned = source;
    copy.Lock();
    std::atomic<bool> entered{false};
    std::thread waiter([&] {
        assigned.Lock();
        entered = true;
        assigned.Unlock();
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_FALSE(entered);
    source.Unlock();
    waiter.join();
    EXPECT_TRUE(entered);
}
