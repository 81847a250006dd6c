// Every kernel forced in turn against the bit-at-a-time model: all lengths around the lane
// and block sizes, every alignment, chaining with continueFlag and the incremental form.
#include "CZRB_Crc.h"
#include "CrcTestSupport.h"
#include "checksums/CrcPath.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace {

using ZRB_CrcKernel::t_Path;

std::vector<unsigned char> RandomBytes(std::mt19937_64& random, size_t n) {
    std::vector<unsigned char> data(n);
    for (auto& b : data) {
        b = static_cast<unsigned char>(random());
    }
    return data;
}

CZRB_Crc Engine(const Params& p) {
    const auto type = static_cast<CZRB_Crc::t_CrcType>(p.width == 8    ? 1
                                                       : p.width == 16 ? 2
                                                       : p.width == 32 ? 3
                                                                       : 4);
    return CZRB_Crc(type, p.polynomial, p.seed, p.refIn, p.refOut, p.finalXor);
}

// Each distinct catalogue parameter set, then random ones (random polynomial, seed and XOR,
// bits above the width included) of every width and each of the four reflection pairs.
const std::vector<Params>& Configurations() {
    static const std::vector<Params> all = [] {
        std::vector<Params> result;
        for (const auto& row : Catalogue()) {
            const Params p = ParamsOf(row);
            const auto same = [&p](const Params& q) {
                return q.width == p.width && q.polynomial == p.polynomial && q.seed == p.seed &&
                       q.refIn == p.refIn && q.refOut == p.refOut && q.finalXor == p.finalXor;
            };
            if (row.standard != CZRB_Crc::MIL_STD_1760 &&
                std::none_of(result.begin(), result.end(), same)) {
                result.push_back(p);
            }
        }
        std::mt19937_64 random(1729);
        for (unsigned int width : {8U, 16U, 32U, 64U}) {
            for (unsigned int pair = 0; pair < 8; ++pair) {
                const unsigned char refIn = (pair & 1U) != 0 ? 0x80 : 0;
                const unsigned char refOut = (pair & 2U) != 0 ? 1 : 0;
                result.push_back({width, random(), random(), refIn, refOut, random()});
            }
        }
        return result;
    }();
    return all;
}

const std::vector<unsigned char>& LargeBuffer() {
    static const auto buffer = [] {
        std::mt19937_64 random(7);
        return RandomBytes(random, (1 << 16) + 13);
    }();
    return buffer;
}

// Every seventh configuration with its result over the large buffer, computed once.
const std::vector<std::pair<Params, U64>>& LargeCases() {
    static const auto cases = [] {
        std::vector<std::pair<Params, U64>> result;
        const auto& large = LargeBuffer();
        for (size_t i = 0; i < Configurations().size(); i += 7) {
            const Params& p = Configurations()[i];
            result.emplace_back(p, ReferenceCrc(p, large.data(), large.size(), p.seed));
        }
        return result;
    }();
    return cases;
}

class CrcKernel : public ::testing::TestWithParam<t_Path> {
protected:
    void SetUp() override {
        if (!ZRB_CrcKernel::IsPathAvailable(GetParam())) {
            GTEST_SKIP() << "this processor cannot run the " << ZRB_CrcKernel::PathName(GetParam())
                         << " kernel";
        }
        ASSERT_TRUE(ZRB_CrcKernel::SelectPath(GetParam()));
        ASSERT_EQ(ZRB_CrcKernel::ActivePath(), GetParam());
    }
    void TearDown() override { ZRB_CrcKernel::SelectPath(ZRB_CrcKernel::BestPath()); }
};

// Lengths 0..1100 cover every remainder of the 16- to 256-byte steps of each kernel; the
// start offset changes with the configuration, so all sixteen alignments are met.
TEST_P(CrcKernel, EveryLengthAndAlignmentMatchesTheModel) {
    std::mt19937_64 random(42);
    const auto buffer = RandomBytes(random, 1100 + 16);
    unsigned int offset = 0;
    for (const Params& p : Configurations()) {
        const CZRB_Crc crc = Engine(p);
        const unsigned char* data = buffer.data() + offset++ % 16;
        ReferenceRegister model(p, p.seed);
        for (size_t n = 0; n <= 1100; model.Feed(data[n++])) {
            const U64 got = ComputeAt(crc, p.width, data, n, 0, 0);
            if (got != model.Result()) {
                FAIL() << "width " << p.width << " polynomial " << std::hex << p.polynomial
                       << " reflection " << int(p.refIn) << int(p.refOut) << std::dec << " length "
                       << n;
            }
        }
    }
}

// Chained calls start from the previous result as it stands; Begin/Update/Finish in pieces of
// random sizes give the result over the whole buffer, here a large one.
TEST_P(CrcKernel, ChainedCallsAndPiecesMatchTheModel) {
    std::mt19937_64 random(99);
    const auto data = RandomBytes(random, 3000);
    for (const Params& p : Configurations()) {
        const CZRB_Crc crc = Engine(p);
        size_t at = 0;
        U64 value = p.seed;
        for (unsigned char flag = 0; at < data.size(); flag = 1) {
            const size_t n = std::min<size_t>(random() % 700, data.size() - at);
            const U64 expected = ReferenceCrc(p, data.data() + at, n, flag ? value : p.seed);
            value = ComputeAt(crc, p.width, data.data() + at, n, value, flag);
            ASSERT_EQ(value, expected) << "width " << p.width << " at " << at << " + " << n;
            at += n;
        }
    }
    for (const auto& [p, expected] : LargeCases()) {
        const CZRB_Crc crc = Engine(p);
        const auto& large = LargeBuffer();
        EXPECT_EQ(ComputeAt(crc, p.width, large.data(), large.size(), 0, 0), expected);
        U64 reg = crc.Begin();
        for (size_t at = 0, n = 0; at < large.size(); at += n) {
            n = std::min<size_t>(random() % 2 != 0 ? random() % 40 : random() % 30000,
                                 large.size() - at);
            reg = crc.Update(reg, large.data() + at, n);
        }
        EXPECT_EQ(crc.Finish(reg), expected) << "width " << p.width;
    }
}

INSTANTIATE_TEST_SUITE_P(Paths, CrcKernel,
                         ::testing::Values(ZRB_CrcKernel::PATH_PORTABLE,
                                           ZRB_CrcKernel::PATH_SSE41_CLMUL,
                                           ZRB_CrcKernel::PATH_AVX2_VPCLMUL,
                                           ZRB_CrcKernel::PATH_AVX512_VPCLMUL),
                         [](const ::testing::TestParamInfo<t_Path>& info) {
                             return std::string(ZRB_CrcKernel::PathName(info.param));
                         });

} // namespace
