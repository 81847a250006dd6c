#include "CZRB_DecimalNumber.h"
#include "CZRB_Exception.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>

namespace {

typedef CZRB_DecimalNumber Dec;

// Exposes the protected scaling helpers.
struct CProbe : CZRB_DecimalNumber {
    using CZRB_DecimalNumber::GetMaxDec;
    using CZRB_DecimalNumber::RoundDecimal;
    using CZRB_DecimalNumber::Sum;
};

// A number from its digit count and scaled value (Sum adds without aligning).
Dec Scaled(unsigned short digits, long long scaled) {
    return CProbe::Sum(Dec(digits), Dec(0, scaled));
}

std::string Text(const CZRB_String& s) {
    return std::string(s.GetStringC(), s.GetLength());
}

const long long kMax = std::numeric_limits<long long>::max();
const long long kMin = std::numeric_limits<long long>::min();

} // namespace

TEST(DecimalNumber, ConstructionSetAndParts) {
    EXPECT_EQ(Dec(2).Set(12ULL, 345, 0).GetScaledValue(), 1235); // 345 rounded half up
    EXPECT_EQ(Dec(2).Set(12ULL, 344, 0).GetScaledValue(), 1234);
    EXPECT_EQ(Dec(2).Set(12ULL, 34, 1).GetScaledValue(), -1234);
    EXPECT_EQ(Dec(2, -5LL).GetScaledValue(), -500);
    EXPECT_EQ(Dec(3, 7LL, static_cast<unsigned short>(25)).GetScaledValue(), 7025);
    EXPECT_EQ(Dec(1, -2LL, static_cast<unsigned short>(5)).GetScaledValue(), -15);
    EXPECT_EQ(Dec(0, kMin).GetScaledValue(), kMin);

    EXPECT_EQ(Dec(2).GetSign(), 1);
    const Dec negative = Scaled(2, -1234);
    EXPECT_EQ(negative.GetSign(), -1);
    EXPECT_EQ(negative.GetIntegral(), 12ULL);
    EXPECT_EQ(negative.GetDecimal(), 34);
    EXPECT_EQ(Dec(0, kMin).GetIntegral(), 9223372036854775808ULL);
    // Digit counts above 4 overflow the 16-bit decimal part: 0.70000 reads 70000 mod 65536.
    EXPECT_EQ(Scaled(5, 70000).GetDecimal(), 4464);
}

TEST(DecimalNumber, RoundDecimalIsHalfUpOnTheFirstDroppedDigit) {
    struct Case {
        unsigned short digits;
        unsigned long long decimal;
        unsigned short expected;
    };
    const Case cases[] = {
        {2, 345, 35},
        {2, 99, 99},
        {2, 99999, 100},
        {1, 10, 1},
        {0, 7, 1},
        {4, 18446744073709551615ULL, 1845},
        {0, 18446744073709551615ULL, 0},
        {5, 1234567, 12346},
        {6, 9999999, 16960}, // 1000000 kept to 16 bits
    };
    for (const Case& c : cases) {
        EXPECT_EQ(CProbe::RoundDecimal(c.digits, c.decimal), c.expected)
            << c.digits << " " << c.decimal;
    }
    EXPECT_EQ(CProbe::GetMaxDec(19), 10000000000000000000ULL);
    EXPECT_EQ(CProbe::GetMaxDec(20), 7766279631452241920ULL); // wraps
    EXPECT_EQ(CProbe::GetMaxDec(64), 0ULL);
    EXPECT_EQ(CProbe::RoundDecimal(70, 56789), 1); // a limit of 0 ends at the last digit
}

TEST(DecimalNumber, ChangeNumDigitsDropsTheCarryAndTruncatesTo16Bits) {
    struct Case {
        unsigned short from;
        long long scaled;
        unsigned short to;
        long long expected;
    };
    const Case cases[] = {
        {2, 296, 1, 21},   // 2.96 -> 2.1, the carry is not moved into the integral part
        {2, 294, 1, 29},   // 2.94 -> 2.9
        {2, -296, 1, -21}, //
        {3, 2996, 2, 210}, // 2.996 -> 2.10
        {2, 296, 0, 2},    // the carry of n = 0 is lost entirely
        {2, 99, 5, 33464}, // 99000 mod 65536
        {2, -4, 1, 0},     // -0.04 -> 0
        {4, 123456789, 0, 12345},
    };
    for (const Case& c : cases) {
        Dec d = Scaled(c.from, c.scaled);
        EXPECT_EQ(d.ChangeNumDigits(c.to).GetScaledValue(), c.expected) << c.scaled;
        EXPECT_EQ(d.GetNumDigits(), c.to);
    }
}

TEST(DecimalNumber, ArithmeticAlignsToTheLeftOperandAndWraps) {
    const Dec a = Scaled(2, 125);
    const Dec b = Scaled(1, 5);
    EXPECT_EQ((a + b).GetScaledValue(), 175);
    EXPECT_EQ((a + b).GetNumDigits(), 2);
    EXPECT_EQ((b + a).GetScaledValue(), 18); // 1.25 re-scaled to 1.3 first
    EXPECT_EQ((b + a).GetNumDigits(), 1);
    EXPECT_EQ((a - b).GetScaledValue(), 75);
    EXPECT_EQ((b - a).GetScaledValue(), -8);
    Dec c = a;
    c += b;
    c -= Scaled(2, 1000);
    EXPECT_EQ(c.GetScaledValue(), -825);
    EXPECT_EQ((a * 3LL).GetScaledValue(), 375);
    EXPECT_EQ((-4LL * a).GetScaledValue(), -500);
    // 64-bit wrap-around without any check.
    EXPECT_EQ((Dec(0, kMax) + Dec(0, 1LL)).GetScaledValue(), kMin);
    EXPECT_EQ((Dec(0, kMin) - Dec(0, 1LL)).GetScaledValue(), kMax);
    EXPECT_EQ((Dec(0, kMin) * -1LL).GetScaledValue(), kMin);
}

TEST(DecimalNumber, CompareAgreesFromBothSides) {
    const Dec x = Scaled(2, 296);
    const Dec y = Scaled(1, 30);
    EXPECT_EQ(x.Compare(y), -1);
    EXPECT_EQ(y.Compare(x), 1); // the side with fewer digits answers the other's negation
    EXPECT_EQ(Dec::Compare(Scaled(1, 30), Scaled(3, 3000)), 0);
    EXPECT_TRUE(x < y && x <= y && y > x && y >= x && x != y);
    EXPECT_FALSE(x == y || x > y || x >= y || y < x);
    EXPECT_EQ(x == Scaled(2, 296), 1);

    // Differential check against exact cross-multiplication; up to 4 digits re-scaling upward
    // is exact, so Compare is the order of the rational values.
    std::mt19937_64 random(20261122);
    std::uniform_int_distribution<long long> values(-2000000000000LL, 2000000000000LL);
    std::uniform_int_distribution<int> digits(0, 4);
    for (int i = 0; i < 2000; ++i) {
        const unsigned short na = static_cast<unsigned short>(digits(random));
        const unsigned short nb = static_cast<unsigned short>(digits(random));
        const long long va = i % 7 == 0 ? 0 : values(random) % 100000;
        const long long vb = i % 5 == 0 ? va : values(random);
        const long long left = va * static_cast<long long>(CProbe::GetMaxDec(nb));
        const long long right = vb * static_cast<long long>(CProbe::GetMaxDec(na));
        const int expected = left < right ? -1 : (left > right ? 1 : 0);
        EXPECT_EQ(Scaled(na, va).Compare(Scaled(nb, vb)), expected) << va << " " << vb;
        EXPECT_EQ(Scaled(nb, vb).Compare(Scaled(na, va)), -expected);
    }
}

TEST(DecimalNumber, ParsesSignsAndSeparators) {
    struct Case {
        unsigned short digits;
        const char* text;
        Dec::t_DecimalPointType type;
        long long expected;
    };
    const Case cases[] = {
        {2, "7,5", Dec::DECIMAL_POINT_COMMA, 750},
        {2, "  12.345  ", Dec::DECIMAL_POINT_DOT, 1235},
        {1, "-0.5", Dec::DECIMAL_POINT_DOT, -5},
        {1, "-.5", Dec::DECIMAL_POINT_ANY, -5},
        {2, "-12", Dec::DECIMAL_POINT_DOT, -1200},
        {1, "3,5", Dec::DECIMAL_POINT_DOT, 30}, // no separator: signed integer up to ','
        {1, "3,5", Dec::DECIMAL_POINT_ANY, 35},
        {1, "3.5,1", Dec::DECIMAL_POINT_ANY, 35}, // '.' is looked for first
        {1, "3.5", static_cast<Dec::t_DecimalPointType>(7), 30},
        {2, "1.123456", Dec::DECIMAL_POINT_DOT, 158}, // 123456 kept to 16 bits, then rounded
        {2, "5.", Dec::DECIMAL_POINT_DOT, 500},
        {2, "abc", Dec::DECIMAL_POINT_DOT, 0},
        {0, "42.7", Dec::DECIMAL_POINT_DOT, 43}, // with n = 0 the decimals 7 round to 1
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Dec(c.digits, c.text, c.type).GetScaledValue(), c.expected) << c.text;
    }
}

TEST(DecimalNumber, DoublesInAndOut) {
    EXPECT_EQ(Dec(2, 12.375).GetScaledValue(), 1238);
    EXPECT_EQ(Dec(2, -12.375).GetScaledValue(), -1238);
    EXPECT_EQ(Dec(0, 2.7).GetScaledValue(), 2);     // n = 0: a decimal part of 1 rounds to 0
    EXPECT_EQ(Dec(2, 2.999).GetScaledValue(), 210); // 100 goes through RoundDecimal: .10
    Dec d(3);
    d = 0.0625;
    EXPECT_EQ(d.GetScaledValue(), 63);
    EXPECT_EQ(Dec(2, std::nan("")).GetScaledValue(), 0);
    EXPECT_EQ(Dec(0, 18446744073709551616.0 * 3 + 1048576).GetScaledValue(), 1048576); // wraps

    EXPECT_DOUBLE_EQ(Scaled(2, -1234).ToDouble(), -12.34);
    EXPECT_DOUBLE_EQ(Scaled(5, 70000).ToDouble(), 0.04464); // the 16-bit decimal part
    EXPECT_TRUE(std::isinf(Scaled(64, 5).ToDouble()));
}

TEST(DecimalNumber, ToStringForms) {
    struct Case {
        unsigned short digits;
        long long scaled;
        const char* plain;
        const char* grouped;
    };
    const Case cases[] = {
        {2, 1234, "12.34", "12,34"},
        {1, -5, "-0.5", "-0,5"},
        {0, 5, "5.0", "5"},
        {3, 5, "0.005", "0,005"},
        {2, 123456789, "1234567.89", "1.234.567,89"},
        {0, -1234, "-1234.0", "-1.234"},
        {0, 2147483648LL, "-2147483648.0", "2.147.483.648"}, // low 32 bits through "%d"
        {5, 70000, "0.04464", "0,70000"},
    };
    for (const Case& c : cases) {
        const Dec d = Scaled(c.digits, c.scaled);
        EXPECT_EQ(Text(d.ToString('.')), c.plain);
        EXPECT_EQ(Text(d.ToString(',', '.')), c.grouped);
    }
}

TEST(DecimalNumber, NamedContainersSortWithCompare) {
    Dec items[] = {Scaled(2, 150), Scaled(1, -3), Scaled(3, 1499), Scaled(0, 1)};
    CZRB_DecimalNumberList list(items, 4);
    list.Sort(1);
    const long long ascending[] = {-3, 1, 1499, 150};
    for (unsigned int i = 0; i < 4; ++i) {
        EXPECT_EQ(list[i].GetScaledValue(), ascending[i]);
    }
    CZRB_DecimalNumberVector vector(items, 4);
    vector.Sort(0);
    const long long descending[] = {150, 1499, 1, -3};
    for (unsigned int i = 0; i < 4; ++i) {
        EXPECT_EQ(vector[i].GetScaledValue(), descending[i]);
    }
    CZRB_DecimalNumberVector empty;
    EXPECT_THROW(empty.Sort(1), CZRB_Exception);
    empty = list; // the base's assignment from a list stays visible
    EXPECT_EQ(empty[3].GetScaledValue(), 150);
}
