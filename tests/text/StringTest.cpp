#include "CZRB_String.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace {

// Exposes the protected buffer helpers.
struct CProbe : CZRB_String {
    using CZRB_String::ClearBuffer;
    using CZRB_String::CZRB_String;
    using CZRB_String::IsCharsEqual;
};

} // namespace

TEST(String, ConstructionKeepsEmbeddedZerosAndEqualLengthsReuseTheBuffer) {
    const CZRB_String empty;
    EXPECT_EQ(empty.GetLength(), 0U);
    EXPECT_EQ(empty.GetStringC()[0], 0);
    const CZRB_String withZero("a\0b", 3);
    EXPECT_EQ(Str(CZRB_String(withZero)), std::string("a\0b", 3)); // kept by both constructors
    EXPECT_EQ(Str(CZRB_String("a\0b")), "a");
    EXPECT_EQ(Str(CZRB_String(3U, 'x')), "xxx");
    EXPECT_EQ(Str(CZRB_String('q')), "q");

    CZRB_String s("abc");
    const char* before = s.GetStringC();
    s = "xyz";
    EXPECT_EQ(s.GetStringC(), before);
    s = CZRB_String("uvw");
    EXPECT_EQ(s.GetStringC(), before);
    s.Format("%d", 123);
    EXPECT_EQ(s.GetStringC(), before);
    s = s.GetStringC() + 1; // "123" from inside the own buffer
    EXPECT_EQ(Str(s), "23");
    s.Format("%s%s", s.GetStringC(), s.GetStringC());
    EXPECT_EQ(Str(s), "2323");

    CProbe probe;
    const char* emptyBuffer = probe.GetStringC();
    probe.ClearBuffer();
    EXPECT_EQ(probe.GetStringC(), emptyBuffer);
    EXPECT_EQ(Str(s.SetLength(6, '-')), "2323--");
    EXPECT_EQ(Str(s.SetLength(2, '-')), "23");
    EXPECT_EQ(Str(s.Build(2, 'z')), "zz");
    EXPECT_EQ(s.GetChar(2), 0);
    EXPECT_EQ(Str(s.SetChar(1, 'y').SetChar(2, 'w')), "zy");
    char copy[8];
    s.ToStringC(copy);
    EXPECT_STREQ(copy, "zy");
}

TEST(String, ConcatenationAndSubstringsClip) {
    const CZRB_String abc("abc");
    EXPECT_EQ(Str(abc + "de"), "abcde");
    EXPECT_EQ(Str("x" + abc + 'y'), "xabcy");
    EXPECT_EQ(Str('x' + abc), "xabc");
    CZRB_String grow(abc);
    const char* before = grow.GetStringC();
    grow += "";
    grow += CZRB_String();
    EXPECT_EQ(grow.GetStringC(), before);
    grow += grow;
    EXPECT_EQ(Str(grow), "abcabc");

    EXPECT_EQ(Str(abc.Left(10)), "abc");
    EXPECT_EQ(Str(abc.Right(2)), "bc");
    EXPECT_EQ(Str(abc.Mid(3, 1)), "");
    EXPECT_EQ(Str(abc.Mid(1, 99)), "bc");
    EXPECT_EQ(Str(abc.Mid(1, 0)), "");
    EXPECT_EQ(Str(abc.RightFromPos(3)), "");
    EXPECT_EQ(Str(abc.RightFromPos(1)), "bc");
    EXPECT_EQ(Str(CZRB_String(abc).ResizeLeft(10)), "abc");
    EXPECT_EQ(Str(CZRB_String(abc).ResizeLeft(0)), "");
    EXPECT_EQ(Str(CZRB_String(abc).ResizeRight(10)), "abc");
    EXPECT_EQ(Str(CZRB_String(abc).ResizeRight(1)), "c");
    EXPECT_EQ(Str(CZRB_String(abc).ResizeRightFromPos(2)), "c");
    EXPECT_EQ(Str(CZRB_String(abc).ResizeMid(1, 1)), "b");
    EXPECT_EQ(Str(CZRB_String(abc).ResizeMid(5, 1)), "");
}

// Insert, RemoveChars, ReplaceChars and ReplaceString: at random in StringGrowthTest.
TEST(String, TrimCaseAndSingleCharacters) {
    EXPECT_EQ(Str(CZRB_String("a,b,,c").RemoveChar(',')), "abc");
    EXPECT_EQ(Str(CZRB_String("a,b").ReplaceChar(',', ';')), "a;b");
    EXPECT_EQ(Str(CZRB_String("  a  ").Trim(' ', 1)), "a  ");
    EXPECT_EQ(Str(CZRB_String("  a  ").Trim(' ', 2)), "  a");
    EXPECT_EQ(Str(CZRB_String("  a  ").Trim(' ', 3)), "a");
    EXPECT_EQ(Str(CZRB_String("xxx").Trim('x', 3)), "");
    EXPECT_EQ(Str(CZRB_String("aB_z\xC4").SetCase(1)), "AB_Z\xC4");
    EXPECT_EQ(Str(CZRB_String("aB_z").SetCase(0)), "ab_z");
    EXPECT_EQ(Str(CZRB_String("aB_z").SetCase(2)), "aB_z");
}

// FindFromBegin: against a plain scan in StringGrowthTest.
TEST(String, SearchesFromTheEndClampTheirStart) {
    const CZRB_String abc("abc");
    unsigned int pos = 77;
    EXPECT_EQ(abc.FindFromEnd('c', &pos, 99), 1);
    EXPECT_EQ(pos, 2U);
    EXPECT_EQ(abc.FindFromEnd('\0', &pos, 3), 1); // a start equal to the length is kept
    EXPECT_EQ(pos, 3U);
    EXPECT_EQ(abc.FindFromEnd('\0', &pos, 4), 0); // a larger one becomes length - 1
    EXPECT_EQ(abc.FindFromEnd('a', &pos, 1), 1);
    EXPECT_EQ(pos, 0U);

    const CZRB_String text("abcabc");
    pos = 77;
    EXPECT_EQ(text.FindFromEnd(CZRB_String("BC"), &pos, 0, 99), 1);
    EXPECT_EQ(pos, 4U);
    EXPECT_EQ(text.FindFromEnd(CZRB_String("bc"), &pos, 1, 3), 1);
    EXPECT_EQ(pos, 1U);
    EXPECT_EQ(text.FindFromEnd(CZRB_String("bca"), &pos, 1, 5), 1); // later candidates run out
    EXPECT_EQ(pos, 1U);
    EXPECT_EQ(text.FindFromEnd(CZRB_String("x"), &pos, 1, 5), 0);
    EXPECT_EQ(text.FindFromEnd(CZRB_String(), &pos, 1, 6), 1); // empty s: the clamped start
    EXPECT_EQ(pos, 6U);
    EXPECT_EQ(text.FindFromEnd(CZRB_String(), &pos, 1, 9), 1);
    EXPECT_EQ(CZRB_String().FindFromEnd('a', &pos, 0) + CZRB_String().FindFromEnd("", &pos, 0, 0),
              0);
    EXPECT_EQ(pos, 5U);
    EXPECT_EQ(CProbe::IsCharsEqual('[', '{', 0), 0);
    EXPECT_EQ(CProbe::IsCharsEqual('Q', 'q', 0), 1);
}

TEST(String, ComparisonUsesSignedBytesAndUpperCaseFolding) {
    // Left, right, the comparison matching case, the one not matching case.
    const std::tuple<const char*, const char*, int, int> cases[] = {
        {"a_", "aZ", 1, 1},     {"a_", "az", -1, 1},  {"\x80", "a", -1, -1}, {"ab", "abc", -1, -1},
        {"a", "a\x80", -1, -1}, {"abc", "ABC", 1, 0}, {"", "", 0, 0},        {"b", "a", 1, 1}};
    for (const auto& [left, right, matching, noMatching] : cases) {
        const CZRB_String a(left), b(right);
        EXPECT_EQ(a.CompareMatchingCase(b), matching) << left << " / " << right;
        EXPECT_EQ(CZRB_String::CompareMatchingCase(b, a), -matching);
        EXPECT_EQ(CZRB_String::CS_Compare(left, right), matching);
        EXPECT_EQ(CZRB_String::CompareNoMatchingCase(a, b), noMatching) << left << " / " << right;
        EXPECT_EQ(a < b, matching < 0 ? 1 : 0);
        EXPECT_EQ(a >= b, matching >= 0 ? 1 : 0);
        EXPECT_EQ(left == b, matching == 0 ? 1 : 0);
        EXPECT_EQ(left > b, matching > 0 ? 1 : 0);
        EXPECT_EQ(left <= b, matching <= 0 ? 1 : 0);
    }
    // Comparisons stop at the first zero byte.
    EXPECT_EQ(CZRB_String("a\0x", 3) == CZRB_String("a"), 1);
}

TEST(String, RadixFormattingMatchesPrintfAndNeverOverruns) {
    EXPECT_EQ(Str(CZRB_String::FromNumber(1234567ULL, 10, 3, '.')), "1.234.567");
    EXPECT_EQ(Str(CZRB_String::FromNumber(0ULL, 2, 4, ' ')), "0");
    EXPECT_EQ(Str(CZRB_String::FromNumber(5ULL, 1, 0, ' ')), "");
    EXPECT_EQ(Str(CZRB_String::FromNumber(35ULL, 36, 0, ' ')), "z");
    const CZRB_String widest = CZRB_String::FromNumber(~0ULL, 2, 1, '_');
    EXPECT_EQ(widest.GetLength(), 127U);
    EXPECT_EQ(Str(CZRB_String::FromNumber(-42LL)), "-42");
    EXPECT_EQ(Str(CZRB_String().SetFromNumber(9223372036854775807LL)), "9223372036854775807");

    std::mt19937_64 random(7);
    for (int i = 0; i < 2000; ++i) {
        const unsigned long long value = random() >> (random() % 64);
        const std::pair<unsigned int, const char*> forms[] = {
            {8, "%llo"}, {10, "%llu"}, {16, "%llx"}};
        for (const auto& [radix, format] : forms) {
            char expected[32];
            std::snprintf(expected, sizeof expected, format, value);
            const CZRB_String text = CZRB_String::FromNumber(value, radix, 0, ' ');
            ASSERT_EQ(Str(text), expected);
            ASSERT_EQ(text.ToUnsigned(radix), value);
            // Grouped every three digits from the right: removing the separators restores it.
            CZRB_String grouped = CZRB_String::FromNumber(value, radix, 3, ',');
            ASSERT_NE(grouped.GetChar(0), ',');
            ASSERT_EQ(grouped.GetLength(), text.GetLength() + (text.GetLength() - 1) / 3);
            ASSERT_EQ(Str(grouped.RemoveChar(',')), expected);
        }
        const long long signedValue = static_cast<long long>(random());
        char expected[32];
        std::snprintf(expected, sizeof expected, "%lld", signedValue);
        ASSERT_EQ(Str(CZRB_String::FromNumber(signedValue)), expected);
        ASSERT_EQ(CZRB_String(expected).ToSigned(), signedValue);
    }
}

TEST(String, FloatingFormattingAndFormatMatchPrintf) {
    EXPECT_EQ(Str(CZRB_String::FromNumber(1.5, 'x', 2)), "");
    EXPECT_EQ(Str(CZRB_String::FromNumber(1.5, 'f', -1)), "1.500000");
    std::mt19937_64 random(11);
    std::uniform_real_distribution<double> values(-1e9, 1e9);
    for (int i = 0; i < 500; ++i) {
        const double value = values(random);
        for (const char conversion : {'f', 'F', 'g', 'G', 'e', 'E'}) {
            const int precision = static_cast<int>(random() % 18);
            char format[8];
            char expected[64];
            std::snprintf(format, sizeof format, "%%.%d%c", precision, conversion);
            std::snprintf(expected, sizeof expected, format, value);
            ASSERT_EQ(Str(CZRB_String::FromNumber(value, conversion, precision)), expected);
        }
        char text[32];
        std::snprintf(text, sizeof text, "%.17g", value);
        ASSERT_EQ(CZRB_String(text).ToDouble(), value);
    }
    CZRB_String s("keep");
    EXPECT_EQ(Str(s.Format("")), ""); // an empty format compiles warning-free
    EXPECT_EQ(Str(s.Format("%05d|%-3s|", 42, "ab")), "00042|ab |");
}

TEST(String, SetFormattedAlignsAndTruncates) {
    EXPECT_EQ(Str(CZRB_String("abc").SetFormatted(6, CZRB_String::ALIGN_RIGHT, '*')), "***abc");
    EXPECT_EQ(Str(CZRB_String("abc").SetFormatted(6, CZRB_String::ALIGN_CENTER, '*')), "*abc**");
    EXPECT_EQ(Str(CZRB_String("abc").SetFormatted(6, CZRB_String::ALIGN_LEFT, '*')), "abc***");
    EXPECT_EQ(Str(CZRB_String("abc").SetFormatted(2, CZRB_String::ALIGN_RIGHT, '*')), "bc");
    EXPECT_EQ(Str(CZRB_String("abc").SetFormatted(2, CZRB_String::ALIGN_CENTER, '*')), "ab");
    EXPECT_EQ(Str(CZRB_String("abc").SetFormatted(2, CZRB_String::ALIGN_LEFT, '*')), "ab");
    EXPECT_EQ(Str(CZRB_String("abc").SetFormatted(0, CZRB_String::ALIGN_LEFT, '*')), "");
}

TEST(String, TextToNumbersWithAutoRadix) {
    const std::tuple<const char*, unsigned int, unsigned long long> cases[] = {
        {"1FH", 2, 31}, {"17o", 2, 15},  {"101b", 2, 101}, {"0x1f", 1, 31}, {"h1f", 1, 31},
        {"o17", 1, 15}, {"b101", 1, 0},  {"42", 1, 42},    {"42", 2, 42},   {"  1fh", 2, 1},
        {"1fh ", 2, 1}, {"1fh", 0, 0},   {"HHH", 1, 0},    {"HHH", 2, 0},   {"", 1, 0},
        {"   ", 2, 0},  {"zz12", 1, 12}, {"0X", 1, 0},     {"h1f  ", 1, 31}};
    for (const auto& [text, notation, expected] : cases) {
        EXPECT_EQ(CZRB_String(text).ToUnsignedAutoRadix(notation), expected) << text << notation;
    }
    EXPECT_EQ(CZRB_String("  -17x").ToSigned(), -17);
    EXPECT_EQ(CZRB_String("0x1F").ToUnsigned(0), 31U);
    EXPECT_EQ(CZRB_String("017").ToUnsigned(0), 15U);
    EXPECT_EQ(CZRB_String("zz").ToUnsigned(1), 0U);
}

TEST(String, ExtractEncapsulatedString) {
    CZRB_String out("old");
    EXPECT_EQ(CZRB_String("x[ab]y").ExtractEncapsulatedString('[', ']', out), 0U);
    EXPECT_EQ(Str(out), "ab");
    EXPECT_EQ(CZRB_String("[]").ExtractEncapsulatedString('[', ']', out), 0U);
    EXPECT_EQ(Str(out), "");
    out = "old";
    EXPECT_EQ(CZRB_String("x[ab").ExtractEncapsulatedString('[', ']', out), 11U);
    EXPECT_EQ(CZRB_String("ab]").ExtractEncapsulatedString('[', ']', out), 11U);
    EXPECT_EQ(CZRB_String().ExtractEncapsulatedString('[', ']', out), 11U);
    EXPECT_EQ(Str(out), "old");
    EXPECT_EQ(CZRB_String("a|b|c|").ExtractEncapsulatedString('|', '|', out), 0U);
    EXPECT_EQ(Str(out), "b");
}

TEST(String, ExtractTagsIntoVectorAndList) {
    const std::pair<const char*, std::vector<std::string>> cases[] = {
        {"a,,b", {"a", "", "b"}}, {",a", {"", "a"}}, {"a,", {"a"}},
        {"abc", {"abc"}},         {",", {""}},       {"", {}}};
    for (const auto& [text, tags] : cases) {
        CZRB_StringVector vector(2, CZRB_String("old"));
        CZRB_StringList list(3, CZRB_String("old"));
        CZRB_String(text).ExtractTags(',', vector);
        CZRB_String(text).ExtractTags(',', list);
        ASSERT_EQ(vector.GetLength(), tags.size()) << text;
        ASSERT_EQ(list.GetLength(), tags.size()) << text;
        for (unsigned int i = 0; i < vector.GetLength(); ++i) {
            EXPECT_EQ(Str(vector[i]), tags[i]) << text;
            EXPECT_EQ(Str(list[i]), tags[i]) << text;
        }
    }
    // Splitting one of the target's own elements replaces the target all the same.
    CZRB_StringVector vector(2, CZRB_String("x;y;z"));
    CZRB_StringList list(2, CZRB_String("x;y;z"));
    vector[1].ExtractTags(';', vector);
    list[1].ExtractTags(';', list);
    for (unsigned int i = 0; i < 3; ++i) {
        EXPECT_EQ(Str(vector[i]) + Str(list[i]), std::string(2, "xyz"[i]));
    }
}

TEST(String, NamedContainersSortWithOrWithoutCase) {
    CZRB_String items[] = {"b", "_", "A", "a", "B"};
    CZRB_StringVector vector(items, 5);
    CZRB_StringList list(items, 5);
    const auto joined = [](CZRB_StringList& l) {
        std::string text;
        for (unsigned int i = 0; i < l.GetLength(); ++i) {
            text += Str(l[i]);
        }
        return text;
    };
    list.Sort(1, 1);
    EXPECT_EQ(joined(list), "AB_ab");
    list.Sort(1, 0); // stable: equal-folded items keep their order; '_' sorts after letters
    EXPECT_EQ(joined(list), "AaBb_");
    list.Sort(0, 0);
    EXPECT_EQ(joined(list), "_BbAa");
    vector.Sort(0, 1);
    EXPECT_EQ(Str(vector[0]) + Str(vector[4]), "bA");
}
