#include "ZRB.h"

#include <gtest/gtest.h>

#include <cstring>
#include <initializer_list>
#include <tuple>
#include <utility>

using namespace ZRB;

namespace {

// The word after SetBit(word, bit, state) for each (bit, state) in turn, from 0.
template <class T>
T AfterSetBits(std::initializer_list<std::pair<unsigned int, unsigned char>> steps) {
    T word = 0;
    for (const auto& [bit, state] : steps) {
        SetBit(word, bit, state);
    }
    return word;
}

// The word after SetField(word, position, width, value).
template <class T>
T AfterSetField(T word, unsigned int position, unsigned int width, T value) {
    SetField(word, position, width, value);
    return word;
}

} // namespace

TEST(ZrbBytes, ByteOrdersRoundTripAndAnyNonZeroOrderIsBigEndian) {
    const unsigned char bytes[8] = {0x12, 0x34, 0x56, 0x78, 0x9A, 0xBC, 0xDE, 0xF0};
    EXPECT_EQ(Uint16FromBuf(bytes, BYTE_ORDER_LITTLE_ENDIAN), 0x3412);
    EXPECT_EQ(Uint16FromBuf(bytes, static_cast<t_ByteOrdering>(7)), 0x1234);
    EXPECT_EQ(Uint32FromBuf(bytes, BYTE_ORDER_LITTLE_ENDIAN), 0x78563412U);
    EXPECT_EQ(Uint32FromBuf(bytes, BYTE_ORDER_BIG_ENDIAN), 0x12345678U);
    EXPECT_EQ(Uint64FromBuf(bytes, BYTE_ORDER_BIG_ENDIAN), 0x123456789ABCDEF0ULL);
    EXPECT_EQ(Int16FromBuf(bytes + 4, BYTE_ORDER_BIG_ENDIAN), static_cast<short>(0x9ABC));
    EXPECT_EQ(Int64FromBuf(bytes, BYTE_ORDER_LITTLE_ENDIAN),
              static_cast<long long>(0xF0DEBC9A78563412ULL));

    // The writers give the same bytes back; negative values keep their bit patterns.
    unsigned char out[8];
    Uint64ToBuf(0x123456789ABCDEF0ULL, out, static_cast<t_ByteOrdering>(2));
    EXPECT_EQ(std::memcmp(out, bytes, 8), 0);
    Int64ToBuf(static_cast<long long>(0xF0DEBC9A78563412ULL), out, BYTE_ORDER_LITTLE_ENDIAN);
    EXPECT_EQ(std::memcmp(out, bytes, 8), 0);
    Int32ToBuf(static_cast<int>(0xF0DEBC9AU), out, BYTE_ORDER_LITTLE_ENDIAN);
    Uint32ToBuf(0x12345678U, out + 4, BYTE_ORDER_BIG_ENDIAN);
    Int16ToBuf(static_cast<short>(0x9ABC), out, BYTE_ORDER_BIG_ENDIAN);
    Uint16ToBuf(0xDEBCU, out + 2, BYTE_ORDER_LITTLE_ENDIAN);
    const unsigned char mixed[8] = {0x9A, 0xBC, 0xBC, 0xDE, 0x12, 0x34, 0x56, 0x78};
    EXPECT_EQ(std::memcmp(out, mixed, 8), 0);
}

TEST(ZrbBytes, FloatingPointUsesTheIeeeBitPattern) {
    unsigned char buffer[8];
    FloatToBuf(1.0f, buffer, BYTE_ORDER_BIG_ENDIAN);
    const unsigned char oneFloat[4] = {0x3F, 0x80, 0x00, 0x00};
    EXPECT_EQ(std::memcmp(buffer, oneFloat, 4), 0);
    EXPECT_EQ(FloatFromBuf(buffer, BYTE_ORDER_BIG_ENDIAN), 1.0f);
    DoubleToBuf(-2.5, buffer, BYTE_ORDER_LITTLE_ENDIAN);
    EXPECT_EQ(buffer[7] * 256 + buffer[6], 0xC004);
    EXPECT_EQ(DoubleFromBuf(buffer, BYTE_ORDER_LITTLE_ENDIAN), -2.5);
}

TEST(ZrbBits, InvertReflectRotateAndCeil) {
    unsigned char abc[3] = {'A', 'B', 'C'};
    InvertByteOrder(abc, 3);
    EXPECT_EQ(std::memcmp(abc, "CBA", 3), 0);
    InvertByteOrder(abc, 0);
    InvertByteOrder(abc, 1);
    EXPECT_EQ(std::memcmp(abc, "CBA", 3), 0);

    EXPECT_EQ(ReflectUint8(0x01), 0x80);
    EXPECT_EQ(ReflectUint16(0x0003), 0xC000);
    EXPECT_EQ(ReflectUint32(0x04C11DB7U), 0xEDB88320U);
    EXPECT_EQ(ReflectUint64(1ULL), 0x8000000000000000ULL);

    EXPECT_EQ(ShiftRotatedLeft8(0x81, 9), 0x03);
    EXPECT_EQ(ShiftRotatedRight8(0x03, 1), 0x81);
    EXPECT_EQ(ShiftRotatedLeft16(0x8001, 16), 0x8001);
    EXPECT_EQ(ShiftRotatedRight32(0x12345678U, 32), 0x12345678U);
    EXPECT_EQ(ShiftRotatedRight32(0x12345678U, 4), 0x81234567U);
    EXPECT_EQ(ShiftRotatedLeft64(0x8000000000000001ULL, 65), 0x0000000000000003ULL);
    EXPECT_EQ(ShiftRotatedRight64(1ULL, 0), 1ULL);

    EXPECT_EQ(IntCeil(10, 5), 2ULL);
    EXPECT_EQ(IntCeil(11, 5), 3ULL);
    EXPECT_EQ(IntCeil(0, 5), 0ULL);
    EXPECT_EQ(IntCeil(7, 0), 0ULL);
}

TEST(ZrbBits, SetBitOutOfRangeKeepsTheShippedOutcomes) {
    // 33 mod 32 = 1; 8 and 40 (mod 32 = 8) lie outside a byte.
    EXPECT_EQ(AfterSetBits<unsigned char>({{33, 1}, {8, 1}, {40, 1}}), 0x02);
    EXPECT_EQ(AfterSetBits<unsigned short>({{17, 1}}), 0x0002);
    EXPECT_EQ(AfterSetBits<unsigned int>({{32, 1}, {31, 1}}), 0x80000000U);
    EXPECT_EQ(AfterSetBits<unsigned int>({{31, 1}, {31, 0}}), 0U);
    const auto wide = AfterSetBits<unsigned long long>({{64, 1}, {63, 1}});
    EXPECT_EQ(wide, 0x8000000000000000ULL);
    EXPECT_EQ(GetBit(wide, 63) * 10 + GetBit(wide, 64), 10);
}

TEST(ZrbFields, MasksStopAtTheWordTopAndTheSumWrapsIn32Bits) {
    const unsigned long long w = 0xF123456789ABCDEFULL;
    EXPECT_EQ(GetField(w, 60, 8), 0xFULL);
    EXPECT_EQ(GetField(w, 4, 8), 0xDEULL);
    EXPECT_EQ(GetField(w, 0, 0), 0ULL);
    EXPECT_EQ(GetField(w, 64, 4), 0ULL);
    EXPECT_EQ(GetField(w, 0, 64), w);
    EXPECT_EQ(GetField(w, 8, 0xFFFFFFFFU), 0ULL); // 8 + 0xFFFFFFFF wraps to 7

    EXPECT_EQ(AfterSetField(0ULL, 4, 4, 0x1FULL), 0xF0ULL); // value bits above the width dropped
    EXPECT_EQ(AfterSetField(0xF0ULL, 4, 0, 0ULL), 0xF0ULL);
    using Byte = unsigned char;
    EXPECT_EQ(AfterSetField<Byte>(0xFF, 6, 4, 0), 0x3F);
    EXPECT_EQ(AfterSetField<Byte>(0xFF, 8, 4, 0), 0xFF);
    EXPECT_EQ(AfterSetField<unsigned short>(0, 12, 8, 0xAB), 0xB000);
    EXPECT_EQ(AfterSetField(0U, 0, 32, 0xDEADBEEFU), 0xDEADBEEFU);
}

TEST(ZrbFields, SignedRepresentationsReadAndWrite) {
    const std::tuple<unsigned long long, t_ZRB_NumberRepr, long long> reads[] = {
        {0xF, NUMBER_REPR_TWOS_COMPLEMENT, -1}, {0xE, NUMBER_REPR_ONES_COMPLEMENT, -1},
        {0xF, NUMBER_REPR_ONES_COMPLEMENT, 0},  {0x9, NUMBER_REPR_SIGN_MAGNITUDE, -1},
        {0x7, NUMBER_REPR_OFFSET_BINARY, -1},   {0x9, NUMBER_REPR_UNSIGNED, 9},
        {0x5, NUMBER_REPR_SIGN_MAGNITUDE, 5},   {0x8, NUMBER_REPR_TWOS_COMPLEMENT, -8},
    };
    for (const auto& [raw, repr, value] : reads) {
        EXPECT_EQ(GetSignedField(raw << 8, 8, 4, repr), value) << raw << " " << repr;
    }
    EXPECT_EQ(GetSignedField(0xABCD00ULL, 8, 64, NUMBER_REPR_TWOS_COMPLEMENT), 0xABCD00LL);
    EXPECT_EQ(GetSignedField(0x1ULL, 0, 1, NUMBER_REPR_TWOS_COMPLEMENT), 0);
    EXPECT_EQ(GetSignedField(0x1ULL, 0, 1, NUMBER_REPR_OFFSET_BINARY), 0);
    EXPECT_EQ(GetSignedField(0x0ULL, 0, 1, NUMBER_REPR_OFFSET_BINARY), -1);
    EXPECT_EQ(GetSignedField(0xFULL, 0, 4, static_cast<t_ZRB_NumberRepr>(9)), 0);
    EXPECT_EQ(GetSignedField(0xFULL, 0, 0, NUMBER_REPR_UNSIGNED), 0);

    for (int repr = 0; repr <= 4; ++repr) {
        const auto r = static_cast<t_ZRB_NumberRepr>(repr);
        const long long lowest = repr == 0 ? 0 : (repr == 2 || repr == 4 ? -128 : -127);
        for (long long value = lowest; value <= (repr == 0 ? 255 : 127); ++value) {
            unsigned long long word = 0xFFFFFFFFFFFFFFFFULL;
            SetSignedField(word, 20, 8, value, r);
            EXPECT_EQ(GetSignedField(word, 20, 8, r), value) << "repr " << repr;
            EXPECT_EQ(word | 0xFF00000ULL, 0xFFFFFFFFFFFFFFFFULL); // outside bits kept
        }
    }
    unsigned long long word = 0xFFFF;
    SetSignedField(word, 4, 8, -3, static_cast<t_ZRB_NumberRepr>(5));
    EXPECT_EQ(word, 0xF00FULL);
}

TEST(ZrbFields, BcdDigitsAndNonDecimalNibbles) {
    unsigned long long w = 0xFFFF0000ULL << 32;
    SetBcdField(w, 0, 4, 123456);
    EXPECT_EQ(w, 0xFFFF000000003456ULL);
    EXPECT_EQ(GetBcdField(w, 0, 4), 3456ULL);
    EXPECT_EQ(GetBcdField(0x1AULL, 0, 2), 20ULL);

    unsigned long long full = 0;
    SetBcdField(full, 0, 20, 1234567890123456789ULL);
    EXPECT_EQ(full, 0x4567890123456789ULL);
    EXPECT_EQ(GetBcdField(full, 0, 20), 4567890123456789ULL);
}

TEST(ZrbColour, QuadComponentsFromA32BitWord) {
    const t_WinRgbQuad q = ToWinRgbQuad32Bit(0x80112233U);
    EXPECT_EQ((q.Reserved << 24) | (q.Red << 16) | (q.Green << 8) | q.Blue, 0x80112233);
}
