#include "CZRB_Mutex.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

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

// Threads take the mutex two levels deep around an unprotected counter: half of them through
// the shared object, half through copies they make and drop on every round. A lost update, a
// failed call (a second Unlock that finds the mutex released) or a data race (under
// ThreadSanitizer) shows that the copies do not share one recursive mutex.
TEST(Mutex, ContendedRecursiveLockingThroughCopiesKeepsOthersOut) {
    CZRB_Mutex shared;
    long counter = 0;
    const int threads = 4, rounds = 2000;
    std::vector<unsigned int> failures(threads, 0);
    std::vector<std::thread> workers;
    for (int t = 0; t < threads; ++t) {
        workers.emplace_back([&, t] {
            for (int round = 0; round < rounds; ++round) {
                CZRB_Mutex copy(shared);
                CZRB_Mutex& mutex = t % 2 == 0 ? shared : copy;
                failures[t] += mutex.Lock() + mutex.Lock();
                ++counter;
                failures[t] += mutex.Unlock() + mutex.Unlock();
            }
        });
    }
    for (auto& worker : workers) {
        worker.join();
    }
    EXPECT_EQ(counter, long{threads} * rounds);
    EXPECT_EQ(failures, std::vector<unsigned int>(threads, 0));
}
