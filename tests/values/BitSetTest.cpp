#include "CZRB_BitSet.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace {

using Bits = std::vector<bool>;
using Bytes = std::vector<unsigned char>;

CZRB_BitSet Make(const Bits& bits) {
    CZRB_BitSet set(static_cast<unsigned int>(bits.size()), 0);
    for (unsigned int i = 0; i < bits.size(); ++i) {
        set.SetBit(i, bits[i]);
    }
    return set;
}

Bits Read(const CZRB_BitSet& set) {
    Bits bits(set.GetNumBits());
    for (unsigned int i = 0; i < bits.size(); ++i) {
        bits[i] = set.GetBit(i) != 0;
    }
    return bits;
}

Bits Cat(Bits low, const Bits& high) {
    low.insert(low.end(), high.begin(), high.end());
    return low;
}

// Numeric comparison of two bit strings (zero-extended), as the set compares its words.
int CompareBits(const Bits& a, const Bits& b) {
    for (size_t i = std::max(a.size(), b.size()); i-- > 0;) {
        const bool x = i < a.size() && a[i], y = i < b.size() && b[i];
        if (x != y) {
            return x ? 1 : -1;
        }
    }
    return 0;
}

} // namespace

// Sets built and changed bit by bit keep zeros above their length, so a plain bit vector
// predicts every operation.
TEST(BitSetTest, MatchesBitVectorReference) {
    std::mt19937 rng(12345);
    auto random = [&](unsigned int n) {
        Bits bits(n);
        for (unsigned int i = 0; i < n; ++i) {
            bits[i] = (rng() & 1) != 0;
        }
        return bits;
    };
    for (unsigned int n : {1, 2, 63, 64, 65, 127, 128, 129, 200}) {
        for (unsigned int m : {1, 2, 63, 64, 65, 127, 128, 129, 200}) {
            const Bits a = random(n), b = random(m);
            const CZRB_BitSet sa = Make(a), sb = Make(b);
            Bits andBits, orBits, xorBits;
            for (unsigned int i = 0; i < std::min(n, m); ++i) {
                andBits.push_back(a[i] && b[i]);
                orBits.push_back(a[i] || b[i]);
                xorBits.push_back(a[i] != b[i]);
            }
            EXPECT_EQ(Read(sa & sb), andBits);
            EXPECT_EQ(Read(sa | sb), orBits);
            EXPECT_EQ(Read(sa ^ sb), xorBits);
            EXPECT_EQ(sa.Compare(sb), CompareBits(a, b)) << n << " vs " << m;

            EXPECT_EQ(Read(sa.Join(sb)), Cat(b, a));
            CZRB_BitSet below(sa), above(sa), target(sa);
            EXPECT_EQ(Read(below.Merge(sb, 0)), Cat(b, a));
            EXPECT_EQ(Read(above.Merge(sb, 1)), Cat(a, b));

            const unsigned int position = m % (n + 1), width = std::min(m, n - position);
            Bits written(a);
            std::copy(b.begin(), b.begin() + width, written.begin() + position);
            EXPECT_EQ(Read(target.SetField(position, m, sb)), written);
            EXPECT_EQ(Read(sa.GetField(position, m)),
                      Bits(a.begin() + position, a.begin() + position + width));
        }
        const Bits a = random(n);
        const CZRB_BitSet sa = Make(a);
        for (unsigned int shift : {0U, 1U, 63U, 64U, 65U, n - 1, n, n + 1, 1000U}) {
            Bits left(n), right(n);
            for (unsigned int i = 0; i < n; ++i) {
                left[i] = i >= shift && a[i - shift];
                right[i] = shift < n - i && a[i + shift];
            }
            EXPECT_EQ(Read(sa << shift), left) << n << " << " << shift;
            EXPECT_EQ(Read(sa >> shift), right) << n << " >> " << shift;
        }
        Bits inverted(a);
        inverted.flip();
        EXPECT_EQ(Read(~sa), inverted);
        const unsigned int ones = static_cast<unsigned int>(std::count(a.begin(), a.end(), true));
        EXPECT_EQ(sa.And(), ones == n);
        EXPECT_EQ(sa.Or(), ones != 0);
        EXPECT_EQ(sa.Xor(), ones % 2);
    }
}

TEST(BitSetTest, LengthsWordCountsAndFields) {
    EXPECT_EQ(CodeOf([] { CZRB_BitSet(0, 1); }), 5U);
    EXPECT_EQ(CodeOf([] { CZRB_BitSet() << 1; }), 5U);
    EXPECT_EQ(CodeOf([] { CZRB_BitSet() >> 1; }), 5U);
    CZRB_BitSet empty;
    EXPECT_TRUE(!empty.IsValid() && empty.ToUnsigned() == 0 && empty.And() == 1);
    EXPECT_FALSE(empty.GetField(0, 8).IsValid());

    // Assigning a 64-bit value keeps the length only of a one-word set.
    for (unsigned int bits : {10, 63, 64, 65, 128, 129}) {
        CZRB_BitSet set(bits, 1);
        set = 0x8000000000000001ULL;
        EXPECT_EQ(set.GetNumBits(), bits <= 64 ? bits : 64) << bits;
        EXPECT_EQ(set.ToUnsigned(), 0x8000000000000001ULL) << bits;
    }
    empty = 5ULL;
    EXPECT_EQ(empty.GetNumBits(), 64u);

    CZRB_BitSet seventy(70, 0);
    seventy.SetBit(70, 1).SetBit(69, 1);
    EXPECT_EQ(seventy.GetBit(70), 0);
    EXPECT_EQ(seventy.ToUnsigned(), ~0ULL); // saturates
    seventy.SetNumBits(0);
    EXPECT_TRUE(!seventy.IsValid() && seventy.GetNumBits() == 0);
    seventy.SetNumBits(3);
    EXPECT_TRUE(seventy.IsValid() && seventy.ToUnsigned() == 0);

    CZRB_BitSet wide(130, 0);
    wide.Fill(60, 10, 1).Fill(125, 100, 1).Fill(131, 5, 1);
    EXPECT_EQ(wide.GetFieldUnsigned(58, 14), 0x0FFCu);
    EXPECT_EQ(wide.GetFieldUnsigned(124, 64), 0x3Eu);
    wide.SetFieldUnsigned(128, 9, 0).SetFieldUnsigned(131, 1, 1); // clamped to the length
    EXPECT_EQ(wide.GetFieldUnsigned(126, 64), 0x3u);
    CZRB_BitSet longer(200, 0);
    longer.SetFieldUnsigned(100, 200, ~0ULL); // at most 64 bits written
    EXPECT_EQ(longer.GetFieldUnsigned(98, 4), 0xCu);
    EXPECT_EQ(longer.GetFieldUnsigned(160, 8), 0xFu);
}

TEST(BitSetTest, BitsAboveTheLength) {
    CZRB_BitSet ones(10, 1);
    EXPECT_EQ(ones.ToUnsigned(), ~0ULL);
    EXPECT_TRUE(ones > 1023ULL);
    EXPECT_EQ(ones.GetFieldUnsigned(0, 64), 1023u);
    EXPECT_EQ(ones.GetBit(10), 0);
    EXPECT_EQ(ones[10], 1); // unchecked within the word
    ones.SetNumBits(20);    // grows inside the word: the old bits come back
    EXPECT_EQ(ones.GetFieldUnsigned(0, 20), 0xFFFFFu);
    ones.SetNumBits(70); // the new word is zeroed
    EXPECT_EQ(ones.GetFieldUnsigned(60, 10), 0xFu);

    CZRB_BitSet zero(10, 0), hundred(100, 0), b(70, 1);
    EXPECT_EQ((~zero).ToUnsigned(), ~0ULL);
    EXPECT_TRUE((~zero << 0) == 1023ULL); // a shift stays within the length
    hundred.SetFieldUnsigned(0, 64, 7);
    EXPECT_TRUE(hundred == 7ULL && hundred <= 7ULL && hundred < 8ULL && hundred != 6ULL);
    EXPECT_EQ((zero | b).ToUnsigned(), ~0ULL); // one word, taken whole
    zero |= b;
    EXPECT_EQ(zero.GetNumBits(), 10u);
    EXPECT_EQ(zero.Compare(b), -1); // b's second word decides
}

TEST(BitSetTest, JoinMergeAndBitReferences) {
    CZRB_BitSet a(4, 0), empty;
    a.SetFieldUnsigned(0, 4, 0xA);
    CZRB_BitSet merged(a);
    EXPECT_EQ(merged.Merge(merged, 0).ToUnsigned(), 0xAAu);
    EXPECT_EQ(CodeOf([&] { CZRB_BitSet(a).Merge(empty, 1); }), 32U);
    EXPECT_EQ(CodeOf([&] { CZRB_BitSet().Merge(a, 0); }), 32U);
    EXPECT_EQ(CodeOf([&] { a.Join(empty); }), 32U);
    EXPECT_EQ(CodeOf([&] { empty.Join(a); }), 32U);

    CZRB_BitSet set(8, 0);
    set[3] = 1;
    EXPECT_EQ(set.ToUnsigned(), 8u);
    CZRB_BitSet::CBit left = set[0];
    left = set[3]; // copies bit 3 into bit 0, then designates bit 3
    EXPECT_EQ(set.ToUnsigned(), 9u);
    left = 0;
    EXPECT_EQ(set.ToUnsigned(), 1u);
    EXPECT_EQ(set[64], 0); // beyond the words: reads 0, writes nothing
    set[64] = 1;
    set[1000000] = 1;
    EXPECT_EQ(set.ToUnsigned(), 1u);
    CZRB_BitSet::CBit none;
    none = 1;
    EXPECT_EQ(static_cast<unsigned char>(none), 0);
}

TEST(BitSetTest, RawByteBuffers) {
    const unsigned char bytes[16] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
    CZRB_BitSet one(64, 0);
    one.SetRawByteBuffer(bytes, 16, ZRB::BYTE_ORDER_LITTLE_ENDIAN);
    EXPECT_EQ(one.ToUnsigned(), 0x0807060504030201ULL);
    one.SetRawByteBuffer(bytes, 8, ZRB::BYTE_ORDER_BIG_ENDIAN);
    EXPECT_EQ(one.ToUnsigned(), 0x0102030405060708ULL);
    one.SetRawByteBuffer(bytes, 2, ZRB::BYTE_ORDER_BIG_ENDIAN); // only the low two bytes
    EXPECT_EQ(one.ToUnsigned(), 0x0102030405060102ULL);

    Bytes out(8, 0xEE);
    one.GetRawByteBuffer(out.data(), 8, ZRB::BYTE_ORDER_LITTLE_ENDIAN); // 4 bytes only
    EXPECT_EQ(out, (Bytes{2, 1, 6, 5, 0xEE, 0xEE, 0xEE, 0xEE}));
    one.GetRawByteBuffer(out.data(), 8, static_cast<ZRB::t_ByteOrdering>(7));
    EXPECT_EQ(out, (Bytes{2, 1, 6, 5, 5, 6, 1, 2}));

    // Round trips within the low 32 bits of each word, in both orders.
    CZRB_BitSet two(65, 0);
    two.SetRawByteBuffer(bytes, 12, ZRB::BYTE_ORDER_LITTLE_ENDIAN);
    EXPECT_EQ(two.GetFieldUnsigned(64, 1), 1u);
    two.GetRawByteBuffer(out.data(), 8, ZRB::BYTE_ORDER_LITTLE_ENDIAN);
    EXPECT_EQ(out, (Bytes{1, 2, 3, 4, 9, 10, 11, 12}));
    CZRB_BitSet four(32, 0);
    four.SetRawByteBuffer(bytes, 4, ZRB::BYTE_ORDER_BIG_ENDIAN);
    EXPECT_EQ(four.ToUnsigned(), 0x01020304u);
    four.GetRawByteBuffer(out.data(), 4, ZRB::BYTE_ORDER_BIG_ENDIAN);
    EXPECT_EQ(Bytes(out.begin(), out.begin() + 4), Bytes(bytes, bytes + 4));
}

TEST(BitSetTest, ToStringInEveryBase) {
    CZRB_BitSet ones(10, 1), byte(8, 0), wide(65, 0), empty;
    byte.SetFieldUnsigned(0, 8, 0xA5);
    wide.SetBit(0, 1).SetBit(64, 1);
    const struct {
        const CZRB_BitSet* set;
        unsigned int base, group;
        char separator;
        const char* text;
    } cases[] = {
        {&ones, 16, 4, '_', "FFF"},
        {&ones, 2, 4, '_', "11_1111_1111"},
        {&ones, 2, 0, '_', "1111111111"},
        {&ones, 10, 3, '.', "18.446.744.073.709.551.615"},
        {&byte, 2, 4, ' ', "1010 0101"},
        {&byte, 16, 1, ':', "A:5"},
        {&byte, 8, 0, ' ', "245"},
        {&wide, 16, 0, ' ', "10000000000000001"},
        {&wide, 2, 64, ' ', "1 0000000000000000000000000000000000000000000000000000000000000001"},
        {&wide, 10, 0, ' ', ""},
        {&empty, 2, 4, ' ', ""},
    };
    for (const auto& c : cases) {
        EXPECT_STREQ(c.set->ToString(c.base, c.group, c.separator).GetStringC(), c.text);
    }
}

TEST(BitSetTest, NamedContainersSortByValue) {
    // The order is Compare's (checked against the reference above): the longer set holding 5
    // is the smaller.
    CZRB_BitSet items[3] = {CZRB_BitSet(8, 0), CZRB_BitSet(200, 0), CZRB_BitSet(3, 0)};
    items[0].SetFieldUnsigned(0, 8, 200);
    items[1].SetFieldUnsigned(0, 8, 5);
    items[2].SetFieldUnsigned(0, 3, 6);
    CZRB_BitSetVector vector(items, 3);
    CZRB_BitSetList list(items, 3);
    vector.Sort(1);
    list.Sort(0);
    EXPECT_TRUE(vector[0].GetNumBits() == 200 && vector[1].ToUnsigned() == 6 &&
                vector[2].ToUnsigned() == 200);
    EXPECT_TRUE(list[0].ToUnsigned() == 200 && list[1].ToUnsigned() == 6 &&
                list[2].GetNumBits() == 200);
}
