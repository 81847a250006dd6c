#include "CZRB_DecimalNumber.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <tuple>

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
    EXPECT_TRUE(negative.GetSign() == -1 && negative.GetIntegral() == 12 &&
                negative.GetDecimal() == 34);
    EXPECT_EQ(Dec(0, kMin).GetIntegral(), 9223372036854775808ULL);
    // Digit counts above 4 overflow the 16-bit decimal part: 0.70000 reads 70000 mod 65536.
    EXPECT_EQ(Scaled(5, 70000).GetDecimal(), 4464);
}

TEST(DecimalNumber, RoundDecimalIsHalfUpOnTheFirstDroppedDigit) {
    // 9999999 with n = 6 rounds to 1000000, kept to 16 bits.
    const std::tuple<unsigned short, unsigned long long, unsigned short> cases[] = {
        {2, 345, 35},        {2, 99, 99},         {2, 99999, 100},  {1, 10, 1},   {0, 7, 1},
        {5, 1234567, 12346}, {6, 9999999, 16960}, {4, ~0ULL, 1845}, {0, ~0ULL, 0}};
    for (const auto& [digits, decimal, expected] : cases) {
        EXPECT_EQ(CProbe::RoundDecimal(digits, decimal), expected) << digits << " " << decimal;
    }
    EXPECT_EQ(CProbe::GetMaxDec(19), 10000000000000000000ULL);
    EXPECT_EQ(CProbe::GetMaxDec(20), 7766279631452241920ULL); // wraps
    EXPECT_EQ(CProbe::GetMaxDec(64), 0ULL);
    EXPECT_EQ(CProbe::RoundDecimal(70, 56789), 1); // a limit of 0 ends at the last digit
}

TEST(DecimalNumber, ChangeNumDigitsDropsTheCarryAndTruncatesTo16Bits) {
    // 2.96 -> 2.1 and 2.996 -> 2.10: the carry is not moved into the integral part (with n = 0
    // it is lost entirely); growing keeps 99000 mod 65536.
    const std::tuple<unsigned short, long long, unsigned short, long long> cases[] = {
        {2, 296, 1, 21}, {2, 294, 1, 29},   {2, -296, 1, -21}, {3, 2996, 2, 210},
        {2, 296, 0, 2},  {2, 99, 5, 33464}, {2, -4, 1, 0},     {4, 123456789, 0, 12345}};
    for (const auto& [from, scaled, to, expected] : cases) {
        Dec d = Scaled(from, scaled);
        EXPECT_EQ(d.ChangeNumDigits(to).GetScaledValue(), expected) << scaled;
        EXPECT_EQ(d.GetNumDigits(), to);
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
    // Without its separator "3,5" is a signed integer up to ','; for "any", '.' is looked for
    // first; 123456 is kept to 16 bits, then rounded; with n = 0 the decimals 7 round to 1.
    const auto dot = Dec::DECIMAL_POINT_DOT, any = Dec::DECIMAL_POINT_ANY;
    const auto comma = Dec::DECIMAL_POINT_COMMA, other = Dec::t_DecimalPointType(7);
    const std::tuple<unsigned short, const char*, Dec::t_DecimalPointType, long long> cases[] = {
        {2, "7,5", comma, 750}, {2, "  12.345  ", dot, 1235}, {1, "-0.5", dot, -5},
        {1, "-.5", any, -5},    {2, "-12", dot, -1200},       {2, "5.", dot, 500},
        {2, "abc", dot, 0},     {1, "3,5", any, 35},          {1, "3,5", dot, 30},
        {1, "3.5,1", any, 35},  {1, "3.5", other, 30},        {2, "1.123456", dot, 158},
        {0, "42.7", dot, 43}};
    for (const auto& [digits, text, type, expected] : cases) {
        EXPECT_EQ(Dec(digits, text, type).GetScaledValue(), expected) << text;
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
    // An integral part of 2^31 goes through "%d" with its low 32 bits.
    const std::tuple<unsigned short, long long, const char*, const char*> cases[] = {
        {2, 1234, "12.34", "12,34"},
        {1, -5, "-0.5", "-0,5"},
        {0, 5, "5.0", "5"},
        {3, 5, "0.005", "0,005"},
        {0, -1234, "-1234.0", "-1.234"},
        {2, 123456789, "1234567.89", "1.234.567,89"},
        {5, 70000, "0.04464", "0,70000"},
        {0, 2147483648LL, "-2147483648.0", "2.147.483.648"}};
    for (const auto& [digits, scaled, plain, grouped] : cases) {
        EXPECT_EQ(Str(Scaled(digits, scaled).ToString('.')), plain);
        EXPECT_EQ(Str(Scaled(digits, scaled).ToString(',', '.')), grouped);
    }
}

TEST(DecimalNumber, NamedContainersSortWithCompare) {
    Dec items[] = {Scaled(2, 150), Scaled(1, -3), Scaled(3, 1499), Scaled(0, 1)};
    CZRB_DecimalNumberList list(items, 4);
    CZRB_DecimalNumberVector vector(items, 4);
    list.Sort(1);
    vector.Sort(0);
    const long long ascending[] = {-3, 1, 1499, 150};
    for (unsigned int i = 0; i < 4; ++i) {
        EXPECT_EQ(list[i].GetScaledValue(), ascending[i]);
        EXPECT_EQ(vector[3 - i].GetScaledValue(), ascending[i]);
    }
    vector = list; // the base's assignment from a list stays visible
    EXPECT_EQ(vector[3].GetScaledValue(), 150);
}
