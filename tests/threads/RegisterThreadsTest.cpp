#include "CZRB_Register.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

// Copies share one recursive mutex: what the copy locked twice keeps another thread out of
// the assigned register until the source has unlocked it twice.
TEST(RegisterThreads, CopiesShareTheMutexAcrossThreads) {
    CZRB_Register source;
    CZRB_Register copy(source), assigned;
    assigned = source;
    copy.Lock();
    copy.Lock();
    std::atomic<bool> entered{false};
    std::thread waiter([&] {
        assigned.Lock();
        entered = true;
        assigned.Unlock();
    });
    source.Unlock();
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_FALSE(entered);
    source.Unlock();
    waiter.join();
    EXPECT_TRUE(entered);
}

// The documented way to share a register: field operations bracketed by Lock and Unlock. Each
// thread locks through its own copy (made before the threads start; the copies share the
// register's mutex) and increments a field of the shared register, locking a second level
// through the register itself. A lost increment or a reported race means the bracket failed.
TEST(RegisterThreads, FieldUpdatesBracketedThroughCopiesAreNotLost) {
    CZRB_Register shared;
    const unsigned int threads = 4, rounds = 3000;
    std::vector<CZRB_Register> copies(threads, shared);
    std::vector<std::thread> workers;
    for (unsigned int t = 0; t < threads; ++t) {
        workers.emplace_back([&shared, &mine = copies[t], t] {
            for (unsigned int round = 0; round < rounds; ++round) {
                mine.Lock();
                shared.Lock();
                shared.SetField(8, 16, shared.GetField(8, 16) + 1);
                shared.SetField(60, 4, t);
                shared.Unlock();
                mine.Unlock();
            }
        });
    }
    for (auto& worker : workers) {
        worker.join();
    }
    EXPECT_EQ(shared.GetField(8, 16), threads * rounds);
    EXPECT_LT(shared.GetField(60, 4), threads);
}
