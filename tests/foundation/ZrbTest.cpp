#include "ZRB.h"

#include <gtest/gtest.h>

#include <cstring>
#include <initializer_list>
#include <iterator>
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

    // Floating-point values travel as their IEEE bit patterns.
    FloatToBuf(1.0f, out, BYTE_ORDER_BIG_ENDIAN);
    EXPECT_EQ(Uint32FromBuf(out, BYTE_ORDER_BIG_ENDIAN), 0x3F800000U);
    EXPECT_EQ(FloatFromBuf(out, BYTE_ORDER_BIG_ENDIAN), 1.0f);
    DoubleToBuf(-2.5, out, BYTE_ORDER_LITTLE_ENDIAN);
    EXPECT_EQ(Uint64FromBuf(out, BYTE_ORDER_LITTLE_ENDIAN), 0xC004000000000000ULL);
    EXPECT_EQ(DoubleFromBuf(out, BYTE_ORDER_LITTLE_ENDIAN), -2.5);
}

TEST(ZrbBits, InvertReflectRotateAndCeil) {
    unsigned char abc[3] = {'A', 'B', 'C'};
    InvertByteOrder(abc, 3);
    InvertByteOrder(abc, 0);
    InvertByteOrder(abc, 1);
    EXPECT_EQ(std::memcmp(abc, "CBA", 3), 0);
    // Each result and the value it must have.
    const t_WinRgbQuad quad = ToWinRgbQuad32Bit(0x80112233U);
    // clang-format off
    const std::pair<unsigned long long, unsigned long long> results[] = {
        {ReflectUint8(0x01), 0x80}, {ReflectUint16(0x0003), 0xC000},
        {ReflectUint32(0x04C11DB7U), 0xEDB88320U}, {ReflectUint64(1ULL), 0x8000000000000000ULL},
        {ShiftRotatedLeft8(0x81, 9), 0x03}, {ShiftRotatedRight8(0x03, 1), 0x81},
        {ShiftRotatedLeft16(0x8001, 16), 0x8001}, {ShiftRotatedRight32(0x12345678U, 32), 0x12345678U},
        {ShiftRotatedRight32(0x12345678U, 4), 0x81234567U}, {ShiftRotatedRight64(1ULL, 0), 1},
        {ShiftRotatedLeft64(0x8000000000000001ULL, 65), 0x3},
        {IntCeil(10, 5), 2}, {IntCeil(11, 5), 3}, {IntCeil(0, 5), 0}, {IntCeil(7, 0), 0},
        {quad.Reserved, 0x80}, {quad.Red, 0x11}, {quad.Green, 0x22}, {quad.Blue, 0x33}};
    // clang-format on
    for (size_t i = 0; i < std::size(results); ++i) {
        EXPECT_EQ(results[i].first, results[i].second) << "row " << i;
    }
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
