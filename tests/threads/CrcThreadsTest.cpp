#include "CZRB_Crc.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <thread>
#include <vector>

// Compute only reads a configured engine, so one engine may serve several threads at once.
// Threads run each configuration over the same bytes, whole and in pieces of their own sizes
// and at their own offsets, and must get the single-threaded results.
TEST(CrcThreads, OneConfiguredEngineServesSeveralThreads) {
    std::mt19937 random(20261123);
    std::vector<unsigned char> data(16 * 1024 + 13);
    for (auto& byte : data) {
        byte = static_cast<unsigned char>(random());
    }
    const CZRB_Crc engines[] = {CZRB_Crc(CZRB_Crc::CRC_8_SMBUS),
                                CZRB_Crc(CZRB_Crc::XMODEM),
                                CZRB_Crc(CZRB_Crc::CRC_32_ISO_HDLC),
                                CZRB_Crc(CZRB_Crc::CRC_32C),
                                CZRB_Crc(CZRB_Crc::CRC_64_XZ),
                                CZRB_Crc(CZRB_Crc::CRC_TYPE_64, 0x42F0E1EBA9EA3693ULL, 0, 0, 1, 7)};
    const std::size_t offsets[] = {0, 1, 7, 4096};
    std::vector<unsigned __int64> expected;
    for (const auto& engine : engines) {
        for (const std::size_t offset : offsets) {
            expected.push_back(engine.Finish(
                engine.Update(engine.Begin(), data.data() + offset, data.size() - offset)));
        }
    }

    const unsigned int threads = 4;
    std::vector<unsigned int> mismatches(threads, 0);
    std::vector<std::thread> workers;
    for (unsigned int t = 0; t < threads; ++t) {
        workers.emplace_back([&, t] {
            const std::size_t piece = 1 + 997 * t; // 1, 998, 1995, 2992 bytes
            for (int repeat = 0; repeat < 2; ++repeat) {
                std::vector<unsigned __int64> results;
                for (const auto& engine : engines) {
                    for (const std::size_t offset : offsets) {
                        unsigned __int64 reg = engine.Begin();
                        for (std::size_t at = offset; at < data.size(); at += piece) {
                            const std::size_t n = std::min(piece, data.size() - at);
                            reg = engine.Update(reg, data.data() + at, n);
                        }
                        results.push_back(engine.Finish(reg));
                    }
                }
                mismatches[t] += results != expected;
            }
        });
    }
    for (auto& worker : workers) {
        worker.join();
    }
    EXPECT_EQ(mismatches, std::vector<unsigned int>(threads, 0));
}
