#include "CZRB_Code.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

namespace {

// The rendered code after filling it from `text`.
std::string Matched(const char* pattern, const char* text) {
    CZRB_Code code{CZRB_String(pattern)};
    return Str(code.Set(CZRB_String(text)).GetString());
}

} // namespace

TEST(Code, TemplateSyntax) {
    // Pattern, Format's result, field count, the text with every field set to its own name.
    // A trailing literal is dropped, an unterminated field too (the literal before it stays);
    // '>' outside a field is text, '<' inside a field is part of the name.
    const std::tuple<const char*, unsigned int, unsigned int, const char*> cases[] = {
        {"", 0, 0, ""},           {"abc", 0, 0, ""},           {"<>", 11, 0, ""},
        {"<a>x<a>", 11, 0, ""},   {"<a><b>", 11, 0, ""},       {"<a>x<b>", 0, 2, "axb"},
        {"ID<n>", 0, 1, "IDn"},   {"a<x>b", 0, 1, "ax"},       {"ab<cd", 0, 0, "ab"},
        {"a>b<x>", 0, 1, "a>bx"}, {"<a<b>-<A>", 0, 2, "a<b-A"}};
    for (const auto& [pattern, result, fields, rendered] : cases) {
        CZRB_Code code;
        EXPECT_EQ(code.Format(CZRB_String(pattern)), result) << pattern;
        EXPECT_EQ(code.GetNames().GetLength(), fields) << pattern;
        EXPECT_EQ(code.GetValues().GetLength(), fields) << pattern;
        for (unsigned int i = 0; i < fields; ++i) {
            code.SetField(code.GetNames()[i], code.GetNames()[i]);
        }
        EXPECT_EQ(Str(code.GetString()), rendered) << pattern;
    }
    // A failed Format leaves no template behind.
    CZRB_Code code(CZRB_String("<a>-<b>"));
    EXPECT_EQ(code.Format(CZRB_String("<a><b>")), 11U);
    EXPECT_EQ(Str(code.GetString()), "");
    EXPECT_EQ(Str(code.GetField(CZRB_String("a"))), "(*this)");
}

TEST(Code, MatchingSkipsPrefixesAndTheFinalFieldIsGreedy) {
    EXPECT_EQ(Matched("<a>-<b>", "12-34"), "12-34");
    EXPECT_EQ(Matched("ID<n>", "xxID42"), "ID42");
    EXPECT_EQ(Matched("a<x>b", "a12b"), "a12b"); // x takes "12b"
    EXPECT_EQ(Matched("<a>-<b>", "x-y-z"), "x-y-z");
    EXPECT_EQ(Matched("ID<n>", "id42"), "ID"); // literals match case-sensitively
    EXPECT_EQ(Matched("<a>/<b>/<c>", "1/2/3"), "1/2/3");

    CZRB_Code code(CZRB_String("<a>-<b>"));
    code.Set(CZRB_String("12-34"));
    EXPECT_EQ(Str(code.GetField(CZRB_String("b"))), "34");
    EXPECT_EQ(Str(code.GetField(CZRB_String("zz"))), "(*this)");
    code.Set(CZRB_String("1234")); // no '-': nothing changes
    EXPECT_EQ(Str(code.GetString()), "12-34");
    code.Set(CZRB_String("5-")); // an empty final remainder keeps the old value
    EXPECT_EQ(Str(code.GetString()), "5-34");
    code.Set(CZRB_String("x/y-7/8/9")); // "/" is not in the template; the last field takes all
    EXPECT_EQ(Str(code.GetField(CZRB_String("a"))), "x/y");
    EXPECT_EQ(Str(code.GetField(CZRB_String("b"))), "7/8/9");

    CZRB_Code dropped(CZRB_String("a<x>b"));
    dropped.SetField(CZRB_String("x"), CZRB_String("5"));
    dropped.SetField(CZRB_String("y"), CZRB_String("6"));
    EXPECT_EQ(Str(dropped.GetString()), "a5");
}

TEST(Code, SetFromOtherCodeAndCopiesOwnTheirTemplate) {
    CZRB_Code target(CZRB_String("<x>:<y>:<z>"));
    CZRB_Code source(CZRB_String("<z>=<w>=<x>"));
    source.Set(CZRB_String("1=2=3"));
    target.Set(source);
    EXPECT_EQ(Str(target.GetString()), "3::1");

    CZRB_Code copy(target);
    CZRB_Code assigned;
    assigned = copy;
    const CZRB_Code& alias = assigned;
    assigned = alias;
    target.Format(CZRB_String("other<q>"));
    copy.SetField(CZRB_String("y"), CZRB_String("7"));
    EXPECT_EQ(Str(copy.GetString()), "3:7:1");
    EXPECT_EQ(Str(assigned.GetString()), "3::1");
    EXPECT_EQ(Str(target.GetString()), "other");

    const CZRB_Code::CFormatNode node(CZRB_Code::CFormatNode::TYPE_NONE, nullptr);
    EXPECT_EQ(node == node, 0);
    EXPECT_EQ(node != node, 0);
    CZRB_Code::CFormatVector nodes;
    nodes.AppendItem(node);
    unsigned int index = 9;
    EXPECT_EQ(nodes.FindToEnd(node, &index, 0), 0);
    EXPECT_EQ(index, 9U);
}

TEST(Code, ManyFieldsRoundTripAndNamesCompareUpToAZeroByte) {
    CZRB_String pattern, text;
    for (int i = 0; i < 3000; ++i) {
        const CZRB_String number = CZRB_String::FromNumber(static_cast<long long>(i));
        pattern += CZRB_String("<f") + number + "> ";
        text += number + "- ";
    }
    CZRB_Code code;
    ASSERT_EQ(code.Format(pattern), 0U);
    // The trailing literal was dropped from the template, so the last field takes the rest.
    EXPECT_EQ(Str(code.Set(text).GetString()), Str(text));
    EXPECT_EQ(Str(code.GetField(CZRB_String("f2998"))), "2998-");
    EXPECT_EQ(Str(code.GetField(CZRB_String("f2999"))), "2999- ");

    // Names are compared as zero-terminated texts, so these two are the same name.
    EXPECT_EQ(code.Format(CZRB_String("<a\0x>-<a\0y>", 12)), 11U);
    EXPECT_EQ(code.Format(CZRB_String("<a\0x>-<b\0x>", 12)), 0U);
}
