// zrb date run as a program: conversions against published calendar correspondences, the
// table, and the reasons given for dates that do not exist.
#include "ZrbRunner.h"

#include <tuple>

namespace {

TEST_F(ZrbTest, DateConvertsIntoOneCalendar) {
    const std::vector<std::tuple<std::vector<std::string>, std::string>> cases = {
        {{"--from", "gregorian", "--to", "persian", "2024-03-20"}, "1403-01-01\n"}, // Nowruz
        {{"--to", "julian", "1582-10-15"}, "1582-10-05\n"}, // the Gregorian reform
        {{"--from", "Julian", "--to", "gregorian", "1582-10-05"}, "1582-10-15\n"},
        {{"--from", "islamic", "--to", "gregorian", "1-1-1"}, "622-07-19\n"},  // day 1948440
        {{"--from", "julian", "--to", "gregorian", "-1-12-31"}, "-1-12-29\n"}, // no year 0
        {{"--jd", "2451545", "--to", "revised-julian", "--format", "%D.%M.%Y %y%%"},
         "01.01.2000 00%\n"},
    };
    for (const auto& [args, expected] : cases) {
        const ZrbResult r = Zrb({"date"}, args);
        EXPECT_EQ(r.status, 0) << r.err;
        EXPECT_EQ(r.out, expected) << args.back();
    }
}

TEST_F(ZrbTest, DateTableShowsEveryCalendarWithWeekdayAndDayNumbers) {
    EXPECT_EQ(Zrb({"date", "--jd", "2451545"}).out,
              "calendar        date             weekday    day of year     day number\n"
              "gregorian       2000-01-01       Saturday             1        2451545\n"
              "julian          1999-12-19       Saturday           353        2451545\n"
              "revised-julian  2000-01-01       Saturday             1        2451545\n"
              "persian         1378-10-11       Saturday           287        2451545\n"
              "islamic         1420-09-24       Saturday           260        2451545\n");
    const ZrbResult two = Zrb({"date", "--to", "julian,persian", "2024-03-20"});
    EXPECT_EQ(CountLines(two.out, "Wednesday"), 2);
    EXPECT_EQ(CountLines(Zrb({"date", "today"}).out, "day"), 6);
}

TEST_F(ZrbTest, DateRejectsWhatIsNoDateAndSaysWhy) {
    const ZrbCases cases = {
        {{"2023-02-29"}, "month 2 of 2023 has 28 days in the gregorian calendar"},
        {{"--from", "persian", "1402-12-30"}, "has 29 days in the persian calendar"},
        {{"0-01-01"}, "there is no year 0"},
        {{"2024-13-01"}, "month 13 is not between 1 and 12"},
        {{"2024-1"}, "\"2024-1\" is not a date Y-M-D"},
        {{"99999999999-1-1"}, "must fit 32 bits"},
        {{"--to", "mars", "2024-01-01"}, "mars not in"},
        {{"--jd", "999999999999999"}, "outside -784350574879 .. 784354017364"},
        {{"--jd", "5", "2024-01-01"}, "excludes"},
    };
    ExpectRefusals({"date"}, cases);
}

} // namespace
