#include "CZRB_Crc.h"
#include "CZRB_Exception.h"
#include "CZRB_Uint8Vector.h"
#include "CrcTestSupport.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <random>
#include <vector>

namespace {

// The byte-buffer (or vector) Compute of the given width; the register holds start before.
U64 EngineCrc(const CZRB_Crc& crc, unsigned int width, std::vector<unsigned char> data, U64 start,
              unsigned char continueFlag, bool asVector = false) {
    CZRB_Uint8Vector vector;
    if (asVector && !data.empty()) {
        vector.Create(data.data(), static_cast<unsigned int>(data.size()));
    }
    return WithRegister(width, start, [&](auto* r) {
        asVector ? crc.Compute(vector, r, continueFlag)
                 : crc.Compute(data.data(), data.size(), r, continueFlag);
    });
}

U64 CheckValue(const CZRB_Crc& crc, unsigned int width) {
    return WithRegister(width, 0, [&crc](auto* r) { crc.ComputeCheckValue(r); });
}

std::vector<unsigned char> Bytes(const char* text) {
    return std::vector<unsigned char>(text, text + std::strlen(text));
}

template <typename F>
void ExpectCode(unsigned int code, const void* object, F action) {
    try {
        action();
        ADD_FAILURE() << "no exception, expected code " << code;
    } catch (const CZRB_Exception& e) {
        EXPECT_EQ(e.code, code);
        EXPECT_EQ(e.object, object);
        EXPECT_EQ(e.detail, 0ULL);
    }
}

} // namespace

TEST(Crc, CatalogueIsCompleteAndEveryRowReproducesItsCheckValue) {
    const auto rows = Catalogue();
    ASSERT_EQ(rows.size(), 97U);
    for (size_t i = 0; i < rows.size(); ++i) {
        const auto& row = rows[i];
        const int group = row.standard >> 12;
        EXPECT_TRUE(group == 0 || group == 1 || group == 3 || group == 5) << row.name;
        EXPECT_EQ(row.width, group == 0 ? 8U : group == 1 ? 16U : group == 3 ? 32U : 64U);
        EXPECT_TRUE(i == 0 || row.standard > rows[i - 1].standard) << row.name; // no duplicates
        if (row.standard == CZRB_Crc::MIL_STD_1760) {
            continue;
        }
        const CZRB_Crc crc(row.standard);
        EXPECT_EQ(CheckValue(crc, row.width), row.check) << row.name;
        EXPECT_EQ(crc.GetPolynomial(), row.polynomial);
        EXPECT_EQ(crc.GetSeed(), row.seed);
        EXPECT_EQ(crc.GetFinalXor(), row.finalXor);
        EXPECT_EQ(crc.IsInputReflected(), row.inputReflected);
        EXPECT_EQ(crc.IsOuputReflected(), row.outputReflected);
    }
    // A few published values pinned independently of the table.
    EXPECT_EQ(CheckValue(CZRB_Crc(CZRB_Crc::CRC_32_ISO_HDLC), 32), 0xCBF43926ULL);
    EXPECT_EQ(CheckValue(CZRB_Crc(CZRB_Crc::CRC_16_KERMIT), 16), 0x2189ULL);
    EXPECT_EQ(CheckValue(CZRB_Crc(CZRB_Crc::CRC_8_SMBUS), 8), 0xF4ULL);
    EXPECT_EQ(CheckValue(CZRB_Crc(CZRB_Crc::CRC_64_XZ), 64), 0x995DC9BBDF1939FAULL);
}

TEST(Crc, TableDrivenResultsMatchABitwiseReferenceOnRandomData) {
    std::mt19937_64 random(20261122);
    const unsigned int lengths[] = {0, 1, 2, 3, 5, 8, 13, 31, 64, 127, 257, 1001};
    auto randomBytes = [&random](unsigned int n) {
        std::vector<unsigned char> data(n);
        for (auto& b : data) {
            b = static_cast<unsigned char>(random());
        }
        return data;
    };
    for (const auto& row : Catalogue()) {
        if (row.standard == CZRB_Crc::MIL_STD_1760) {
            continue;
        }
        const CZRB_Crc crc(row.standard);
        for (unsigned int n : lengths) {
            const auto data = randomBytes(n);
            const U64 expected = ReferenceCrc(ParamsOf(row), data, row.seed);
            EXPECT_EQ(EngineCrc(crc, row.width, data, 0, 0), expected) << row.name << n;
            EXPECT_EQ(EngineCrc(crc, row.width, data, 0, 0, true), expected) << row.name << n;
        }
    }
    // Free parameters, wider than the register, and a carried start value.
    const unsigned int widths[] = {8, 16, 32, 64};
    for (int round = 0; round < 200; ++round) {
        const unsigned int type = 1 + static_cast<unsigned int>(round % 4);
        const Params p{widths[type - 1],
                       random(),
                       random(),
                       static_cast<unsigned char>(random() % 3 * 0x40),
                       static_cast<unsigned char>(random() % 3 * 0x40),
                       random()};
        const CZRB_Crc crc(static_cast<CZRB_Crc::t_CrcType>(type), p.polynomial, p.seed, p.refIn,
                           p.refOut, p.finalXor);
        const auto data = randomBytes(lengths[random() % 12]);
        const U64 carried = random() & Mask(p.width);
        EXPECT_EQ(EngineCrc(crc, p.width, data, 0, 0), ReferenceCrc(p, data, p.seed));
        EXPECT_EQ(EngineCrc(crc, p.width, data, carried, 1), ReferenceCrc(p, data, carried));
    }
}

// Empty input and carried registers of every kind are in the randomized comparison above.
TEST(Crc, ChainingAndTheWordForm) {
    const CZRB_Crc xmodem(CZRB_Crc::XMODEM);
    const U64 part = EngineCrc(xmodem, 16, Bytes("12345"), 0, 0);
    EXPECT_EQ(EngineCrc(xmodem, 16, Bytes("6789"), part, 1), 0x31C3ULL);

    // The word form runs the table path over the words' bytes in memory order.
    unsigned short words[4];
    std::memcpy(words, "12345678", 8);
    unsigned short fromWords = 0;
    xmodem.Compute(words, 4, &fromWords, 0);
    EXPECT_EQ(fromWords, EngineCrc(xmodem, 16, Bytes("12345678"), 0, 0));
}

TEST(Crc, MilStd1760XorsWordsRotatedByTheirDistanceFromTheEnd) {
    CZRB_Crc mil(CZRB_Crc::MIL_STD_1760);
    const unsigned short one[] = {0x0001};
    const unsigned short two[] = {0x0001, 0x0001};
    unsigned short sum = 0xFFFF;
    mil.Compute(one, 1, &sum, 0);
    EXPECT_EQ(sum, 0x0002);
    mil.Compute(two, 2, &sum, 0);
    EXPECT_EQ(sum, 0x0006);
    mil.Compute(two, 2, &sum, 1); // carried: 0x0006 ^ 0x0006
    EXPECT_EQ(sum, 0x0000);

    // Random words of every count up to 70, unaligned, against the word-by-word definition.
    std::mt19937_64 random(1760);
    std::vector<unsigned char> bytes70(141);
    for (auto& b : bytes70) {
        b = static_cast<unsigned char>(random());
    }
    for (unsigned int n = 0; n <= 70; ++n) {
        unsigned short expected = 0;
        for (unsigned int k = 1; k <= n; ++k) { // the k-th word from the end
            unsigned short word = 0;
            std::memcpy(&word, bytes70.data() + 1 + 2 * (n - k), 2);
            const unsigned int w = word;
            const unsigned int rotation = k % 16;
            expected ^= static_cast<unsigned short>(w << rotation | w >> (16 - rotation));
        }
        mil.Compute(bytes70.data() + 1, 2 * n, &sum, 0);
        ASSERT_EQ(sum, expected) << n << " words";
    }

    // The first of 16 words is at distance 16: rotated by 0. The rest are zero.
    unsigned short sixteen[16] = {0x8001};
    mil.Compute(sixteen, 16, &sum, 0);
    EXPECT_EQ(sum, 0x8001);
    // Bytes in memory order; an odd trailing byte is ignored.
    unsigned char bytes[3];
    std::memcpy(bytes, one, 2);
    bytes[2] = 0xAB;
    mil.Compute(bytes, 3, &sum, 0);
    EXPECT_EQ(sum, 0x0002);

    // Only the 16-bit byte and word forms serve it.
    unsigned int wide = 0;
    ExpectCode(32, &mil, [&] { mil.Compute(bytes, 3, &wide, 0); });
    ExpectCode(32, &mil, [&] { mil.Compute(CZRB_Uint8Vector(bytes, 3), &sum, 0); });
    ExpectCode(32, &mil, [&] { mil.ComputeCheckValue(&sum); });

    // Kept as shipped: selecting it over a 16-bit CRC leaves that CRC in force.
    CZRB_Crc kept(CZRB_Crc::XMODEM);
    kept.Create(CZRB_Crc::MIL_STD_1760);
    const auto digits = Bytes("123456789");
    kept.Compute(digits.data(), digits.size(), &sum, 0);
    EXPECT_EQ(sum, 0x31C3);
    // A rejected selector replaces the recorded one, so the checksum is no longer served.
    ExpectCode(2, &mil, [&] { mil.Create(static_cast<CZRB_Crc::t_StdCrc>(0x2000)); });
    ExpectCode(32, &mil, [&] { mil.Compute(one, 1, &sum, 0); });
}

TEST(Crc, FailuresThrowWithTheEngineAsObjectAndLeaveTheResult) {
    CZRB_Crc crc;
    const unsigned char data[1] = {0x31};
    unsigned char r8 = 0x5A;
    unsigned short r16 = 0x5A;
    unsigned int r32 = 0x5A;
    U64 r64 = 0x5A;
    ExpectCode(32, &crc, [&] { crc.Compute(data, 1, &r8, 0); });
    ExpectCode(32, &crc, [&] { crc.Compute(data, 1, &r16, 0); });
    ExpectCode(32, &crc, [&] { crc.Compute(data, 1, &r32, 0); });
    ExpectCode(32, &crc, [&] { crc.Compute(data, 1, &r64, 0); });
    ExpectCode(32, &crc, [&] { crc.Compute(CZRB_Uint8Vector(1, 0x31), &r8, 0); });
    ExpectCode(32, &crc, [&] { crc.ComputeCheckValue(&r32); });
    for (int value : {0x0013, 0x0FFF, 0x1035, 0x2000, 0x3014, 0x4000, 0x5005, -1}) {
        ExpectCode(2, &crc, [&] { crc.Create(static_cast<CZRB_Crc::t_StdCrc>(value)); });
    }
    EXPECT_THROW(CZRB_Crc(static_cast<CZRB_Crc::t_StdCrc>(0x0013)), CZRB_Exception);

    crc.Create(CZRB_Crc::CRC_16_ARC);
    ExpectCode(32, &crc, [&] { crc.Compute(data, 1, &r8, 0); });
    ExpectCode(32, &crc, [&] { crc.Compute(data, 1, &r32, 0); });
    ExpectCode(32, &crc, [&] { crc.ComputeCheckValue(&r64); });
    // Kept as shipped: an unknown type is accepted and only fails at Compute.
    crc.CreatePolynomial(static_cast<CZRB_Crc::t_CrcType>(5), 0x07, 0, 0, 0, 0);
    ExpectCode(32, &crc, [&] { crc.Compute(data, 1, &r16, 0); });
    EXPECT_EQ(r8 + r16 + r32 + r64, 4 * 0x5AU);
}

TEST(Crc, CopiesOwnTheirTables) {
    auto source = std::make_unique<CZRB_Crc>(CZRB_Crc::CRC_64_XZ);
    const CZRB_Crc copy(*source);
    CZRB_Crc assigned(CZRB_Crc::CRC_8_SMBUS);
    assigned = *source;
    CZRB_Crc& same = assigned;
    assigned = same;
    source->Create(CZRB_Crc::CRC_16_ARC);
    EXPECT_EQ(EngineCrc(*source, 16, Bytes("123456789"), 0, 0), 0xBB3DULL);
    source.reset();
    EXPECT_EQ(EngineCrc(copy, 64, Bytes("123456789"), 0, 0), 0x995DC9BBDF1939FAULL);
    EXPECT_EQ(EngineCrc(assigned, 64, Bytes("123456789"), 0, 0), 0x995DC9BBDF1939FAULL);
    unsigned char r8 = 0;
    ExpectCode(32, &assigned, [&] { assigned.Compute(nullptr, 0, &r8, 0); });
}

// Pieces of every size, odd ones included, give what Compute gives over the whole buffer.
TEST(Crc, IncrementalPiecesEqualOneComputeForEveryConfiguration) {
    std::mt19937_64 random(7);
    std::vector<unsigned char> data(300);
    for (auto& b : data) {
        b = static_cast<unsigned char>(random());
    }
    const auto inPieces = [&](const CZRB_Crc& crc, unsigned int pieces) {
        U64 reg = crc.Begin();
        size_t at = 0;
        for (unsigned int i = 1; i < pieces; ++i) {
            const size_t n = random() % (data.size() - at + 1);
            reg = crc.Update(reg, data.data() + at, n);
            at += n;
        }
        return crc.Finish(crc.Update(reg, data.data() + at, data.size() - at));
    };
    for (const auto& row : Catalogue()) {
        const CZRB_Crc crc(row.standard);
        const U64 whole = EngineCrc(crc, row.width, data, 0, 0);
        for (unsigned int pieces : {1U, 2U, 7U, 40U}) {
            EXPECT_EQ(inPieces(crc, pieces), whole) << row.name << " in " << pieces;
        }
    }
    const CZRB_Crc unconfigured;
    ExpectCode(32, &unconfigured, [&] { unconfigured.Update(0, data.data(), 1); });
}
