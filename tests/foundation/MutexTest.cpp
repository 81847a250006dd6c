#include "CZRB_Mutex.h"

#include <gtest/gtest.h>

#include <thread>

TEST(Mutex, RecursiveLockingNeedsOneUnlockPerLock) {
    CZRB_Mutex mutex;
    EXPECT_EQ(mutex.Lock(), 0U);
    EXPECT_EQ(mutex.Lock(), 0U);
    EXPECT_EQ(mutex.Unlock(), 0U);
    EXPECT_EQ(mutex.Unlock(), 0U);
    EXPECT_EQ(mutex.Unlock(), 1U);
}

TEST(Mutex, UnlockFromAnotherThreadFailsAndCopiesShareOneMutex) {
    CZRB_Mutex mutex;
    ASSERT_EQ(mutex.Lock(), 0U);
    unsigned int foreignUnlock = 0;
    std::thread([&] {
        CZRB_Mutex copy(mutex);
        foreignUnlock = copy.Unlock();
    }).join();
    EXPECT_EQ(foreignUnlock, 1U);

    CZRB_Mutex assigned;
    assigned = mutex;
    EXPECT_EQ(assigned.Unlock(), 0U); // same system mutex, owned by this thread
    EXPECT_EQ(mutex.Unlock(), 1U);
}

TEST(Mutex, AbandonedMutexReportsOneAndGrantsOwnership) {
    CZRB_Mutex mutex;
    std::thread([copy = mutex]() mutable { EXPECT_EQ(copy.Lock(), 0U); }).join();

    EXPECT_EQ(mutex.Lock(), 1U);
    EXPECT_EQ(mutex.Unlock(), 0U); // owned despite the 1
    EXPECT_EQ(mutex.Lock(), 0U);   // and consistent again
    EXPECT_EQ(mutex.Unlock(), 0U);
}
