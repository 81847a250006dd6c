#include "CZRB_Dumper.h"
#include "CZRB_String.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>

namespace {

// Runs `write` and returns what it sent to standard output.
template <class F>
std::string Captured(F write) {
    testing::internal::CaptureStdout();
    write();
    return testing::internal::GetCapturedStdout();
}

} // namespace

TEST(Dumper, WritesEachInsertionAndEndsTheLineOnlyWhenSomethingWasWritten) {
    EXPECT_EQ(Captured([] { CZRB_Dumper dumper; }), "");
    EXPECT_EQ(Captured([] { CZRB_Dumper() << "a" << 1 << 2.5; }), "a12.5\n");
    EXPECT_EQ(Captured([] {
                  CZRB_Dumper() << std::numeric_limits<unsigned long long>::max() << " "
                                << std::numeric_limits<long long>::min() << " " << 4294967295U
                                << " " << -1 << " " << 1.0 / 3 << " " << 1e20;
              }),
              "18446744073709551615 -9223372036854775808 4294967295 -1 0.333333 1e+20\n");
    EXPECT_EQ(Captured([] { CZRB_Dumper() << CZRB_String("x\0y", 3) << CZRB_String("z"); }),
              "xz\n");
    EXPECT_EQ(Captured([] { CZRB_Dumper() << static_cast<const char*>(nullptr); }), "\n");
    // Two dumpers alive at once share the stream in call order; a copy takes the flag along.
    EXPECT_EQ(Captured([] {
                  CZRB_Dumper first;
                  first << "1";
                  CZRB_Dumper second(first);
                  second << "2";
              }),
              "12\n\n");
}

TEST(Dumper, LevelIsClampedToTwo) {
    EXPECT_EQ(CZRB_Dumper().GetLevel(), 2U);
    for (const auto& [level, stored] : {std::pair{0, 0U}, {1, 1U}, {2, 2U}, {3, 2U}, {-1, 2U}}) {
        EXPECT_EQ(CZRB_Dumper(level).GetLevel(), stored) << level;
    }
}
