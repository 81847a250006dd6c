#include "CZRB_Register.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

// The documented way to share a register: field operations bracketed by Lock and Unlock. Each
// thread locks through its own copy or assigned register (made before the threads start; both
// share the register's mutex) and increments a field of the shared register, locking a second
// level through its own register or the shared one. A lost increment or a reported race means
// that a copy or an assignment did not share the mutex.
TEST(RegisterThreads, FieldUpdatesBracketedThroughCopiesAreNotLost) {
    CZRB_Register shared;
    const unsigned int threads = 4, rounds = 3000;
    std::vector<CZRB_Register> copies(2, shared);
    copies.resize(threads); // registers of their own until assigned
    copies[2] = copies[3] = shared;
    std::vector<std::thread> workers;
    for (unsigned int t = 0; t < threads; ++t) {
        workers.emplace_back([&shared, &mine = copies[t], t] {
            for (unsigned int round = 0; round < rounds; ++round) {
                CZRB_Register& second = t % 2 ? shared : mine;
                mine.Lock();
                second.Lock();
                const unsigned __int64 count = shared.GetField(8, 16);
                std::this_thread::yield(); // lets in any thread the lock does not keep out
                shared.SetField(8, 16, count + 1);
                shared.SetField(60, 4, t);
                second.Unlock();
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
