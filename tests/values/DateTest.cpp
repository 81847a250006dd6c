// CZRB_Date: check values, validity, leap rules, arithmetic, comparisons and text.
#include "CZRB_Date.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

struct DateProbe : CZRB_Date {
    using CZRB_Date::DateToJulianDay;
    using CZRB_Date::IsLeapYear;
};

using Cal = CZRB_Date::t_Calendar;
const Cal G = CZRB_Date::CALENDAR_GREGORIAN, J = CZRB_Date::CALENDAR_JULIAN,
          RJ = CZRB_Date::CALENDAR_REVISED_JULIAN, P = CZRB_Date::CALENDAR_PERSIAN,
          I = CZRB_Date::CALENDAR_ISLAMIC, kUnknown = static_cast<Cal>(5);

void ExpectYmd(const CZRB_Date& date, Cal calendar, int y, int m, int d) {
    CZRB_Date::t_Date_Struct s;
    ASSERT_EQ(date.GetDateStruct(s, calendar), 1U);
    EXPECT_TRUE(s.year == y && s.month == m && s.day == d)
        << s.year << "-" << s.month << "-" << s.day << " instead of " << y << "-" << m << "-" << d;
}

// AddMonths as the stepwise loop: one year at a time, year 0 passed without adding months.
CZRB_Date StepwiseAddMonths(const CZRB_Date& from, int n, Cal calendar) {
    CZRB_Date::t_Date_Struct s;
    from.GetDateStruct(s, calendar);
    int month = s.month + n, year = s.year;
    while (month < 1)
        if (--year != 0)
            month += 12;
    while (month > CZRB_Date::GetMonthsPerYear(year, calendar))
        month -= CZRB_Date::GetMonthsPerYear(year++, calendar);
    const int days = CZRB_Date::GetDaysPerMonth(month, year, calendar);
    return CZRB_Date(year, month, std::min(s.day, days), calendar);
}

} // namespace

TEST(Date, CheckValuesAndKnownDatesOfTheFiveCalendars) {
    // clang-format off
    struct { int y, m, d; Cal calendar; long long jd; } const rows[] = {
        {1582, 10, 15, G, 2299161}, {1582, 10, 5, J, 2299161}, {2000, 1, 1, G, 2451545},
        {2000, 1, 1, RJ, 2451545},  {1, 1, 1, I, 1948440},     {1, 1, 1, P, 1948321},
        {1403, 1, 1, P, 2460390},   {2024, 3, 20, G, 2460390}, {1404, 1, 1, P, 2460756},
        {1445, 1, 1, I, 2460145},   {2023, 7, 19, G, 2460145}, {-4713, 1, 1, J, 0},
        {2800, 2, 29, G, 2743798},  {2800, 3, 1, RJ, 2743798}, {1600, 3, 1, RJ, 2305508},
        {1600, 3, 1, G, 2305508},   {-1, 12, 31, G, 1721425},  {1, 1, 1, G, 1721426}};
    // clang-format on
    for (const auto& r : rows) {
        EXPECT_EQ(DateProbe::DateToJulianDay(r.y, r.m, r.d, r.calendar), r.jd) << r.y;
        ExpectYmd(CZRB_Date(2000, 1, 1, G).AddDays(r.jd - 2451545), r.calendar, r.y, r.m, r.d);
    }
    EXPECT_EQ(CZRB_Date(2000, 1, 1, G).GetWeekday(G), 6);
    EXPECT_EQ(CZRB_Date(2024, 3, 4, G).GetWeekday(P), 1);
    EXPECT_EQ(CZRB_Date(2000, 1, 1, G).GetWeekday(kUnknown) + CZRB_Date().GetWeekday(G), 0);
}

TEST(Date, SetAcceptsOnlyRealDatesAndLeavesNullOtherwise) {
    CZRB_Date date(2000, 1, 1, G);
    EXPECT_EQ(date.Set(2000, 2, 29, G), 1U);
    EXPECT_EQ(date.Set(1900, 2, 29, J), 1U);
    // clang-format off
    struct { int y, m, d, calendar; } const bad[] = {
        {1900, 2, 29, 0}, {0, 1, 1, 0}, {2000, 0, 1, 0}, {2000, 13, 1, 0}, {2000, 1, 0, 0},
        {2000, 4, 31, 0}, {2000, 1, 1, 5}, {2000, 1, 1, -1}, {1402, 12, 30, 3},
        {1444, 12, 30, 4}, {2147483647, 12, 31, 1}};
    // clang-format on
    for (const auto& b : bad) {
        date = CZRB_Date(2000, 1, 1, G);
        EXPECT_EQ(date.Set(b.y, b.m, b.d, static_cast<Cal>(b.calendar)), 0U) << b.y << " " << b.m;
        EXPECT_TRUE(date.IsNull() && !date.IsValid());
    }
    CZRB_Date::t_Date_Struct s;
    EXPECT_EQ(date.GetDateStruct(s, G) + CZRB_Date(2000, 1, 1, G).GetDateStruct(s, kUnknown), 0U);
    EXPECT_EQ(CZRB_Date().GetYear(G) + CZRB_Date().GetMonth(G) + CZRB_Date().GetDay(G), 0);
}

TEST(Date, LeapRulesAndLengths) {
    // clang-format off
    struct { int year; const char* leap; } const rows[] = { // G J RJ P I
        {-1, "11010"}, {1, "00000"}, {1900, "01001"}, {2000, "11100"}, {2400, "11100"},
        {2900, "01100"}, {1399, "00010"}, {2, "00001"}, {1445, "00011"}, {-2147483647 - 1, "00000"}};
    // clang-format on
    for (const auto& r : rows)
        for (int c = 0; c < 5; ++c) {
            const bool leap = r.leap[c] == '1';
            EXPECT_EQ(DateProbe::IsLeapYear(r.year, static_cast<Cal>(c)), leap) << r.year << c;
            EXPECT_EQ(CZRB_Date::GetDaysPerYear(r.year, static_cast<Cal>(c)), leap ? 366 : 365);
        }
    EXPECT_EQ(CZRB_Date::GetDaysPerYear(0, G) + CZRB_Date::GetDaysPerYear(2000, kUnknown), 0);
    EXPECT_FALSE(DateProbe::IsLeapYear(0, J)); // year 0 is never a Julian leap year
    EXPECT_EQ(CZRB_Date::GetMonthsPerYear(-5, I) + CZRB_Date::GetMonthsPerYear(0, I), 12);
    EXPECT_EQ(CZRB_Date::GetDaysPerMonth(13, 2000, G) + CZRB_Date::GetDaysPerMonth(2, 0, G), 0);
    const CZRB_Date date(1445, 12, 30, I); // the Islamic year reports 366 days, as shipped
    EXPECT_EQ(date.GetDaysPerMonth(I) * 1000 + date.GetDaysPerYear(I), 30366);
    EXPECT_EQ(date.GetDayOfyear(I) * 1000 + CZRB_Date(2024, 3, 1, G).GetDayOfyear(G), 355061);
    EXPECT_EQ(CZRB_Date().GetDayOfyear(G) + CZRB_Date().GetDaysPerMonth(G), 0);
}

TEST(Date, AddMonthsAndYearsStepOverYearZeroAndClampTheDay) {
    // clang-format off
    struct { int y, m, d; char unit; int n; Cal calendar; int ry, rm, rd; } const rows[] = {
        {2001, 1, 31, 'm', 1, G, 2001, 2, 28},    {-1, 12, 15, 'm', 1, G, 1, 1, 15},
        {1, 1, 15, 'm', -1, G, -1, 12, 15},        {1, 3, 31, 'm', -14, G, -1, 1, 31},
        {-2, 11, 1, 'm', 26, G, 2, 1, 1},          {1403, 6, 31, 'm', 1, P, 1403, 7, 30},
        {1445, 12, 30, 'm', 12, I, 1446, 12, 29},  {-1, 6, 1, 'y', 1, G, 1, 6, 1},
        {1, 6, 1, 'y', -1, G, -1, 6, 1},           {2024, 2, 29, 'y', 1, G, 2025, 2, 28},
        {5, 1, 1, 'y', -10, J, -6, 1, 1},          {-3, 1, 1, 'y', 2, J, -1, 1, 1},
        {2000, 1, 1, 'm', 2147483635, G, 178958969, 8, 1}, // the month sum wraps beyond this
        {2000, 1, 1, 'm', 2147483647, G, -178954972, 4, 1},
        {2000, 1, 1, 'm', -2147483647 - 1, G, -178954972, 5, 1},
        {-1, 1, 1, 'y', 2147483647, G, 2147483647, 1, 1}, // so does the year sum
        {2, 1, 1, 'y', 2147483646, G, -2147483647, 1, 1}};
    // clang-format on
    for (const auto& r : rows) {
        const CZRB_Date from(r.y, r.m, r.d, r.calendar);
        SCOPED_TRACE(testing::Message() << r.y << "-" << r.m << " + " << r.n << r.unit);
        ExpectYmd(r.unit == 'm' ? from.AddMonths(r.n, r.calendar) : from.AddYears(r.n, r.calendar),
                  r.calendar, r.ry, r.rm, r.rd);
    }
    const CZRB_Date today(2024, 3, 5, G), null;
    EXPECT_TRUE(today.AddMonths(0, G) == today && today.AddYears(0, G) == today);
    EXPECT_TRUE(today.AddMonths(1, kUnknown).IsNull() && null.AddMonths(1, G).IsNull());
    EXPECT_TRUE(null.AddYears(1, G).IsNull() && null.AddDays(1).IsNull());
    EXPECT_TRUE(CZRB_Date(-2147483647 - 1, 1, 1, G).AddYears(-2147483647, G).IsNull());
    EXPECT_EQ(today.AddDays(-5).GetDaysTo(today), 5);
    EXPECT_EQ(today.GetDaysTo(null), 0);

    std::mt19937 random(7); // against the stepwise loop
    for (int i = 0; i < 3000; ++i) {
        const auto calendar = static_cast<Cal>(random() % 5);
        const int year = static_cast<int>(random() % 800) - 400;
        const CZRB_Date from(year >= 0 ? year + 1 : year, static_cast<int>(random() % 12) + 1,
                             static_cast<int>(random() % 29) + 1, calendar);
        const int n = static_cast<int>(random() % 10001) - 5000;
        ASSERT_TRUE(from.AddMonths(n, calendar) == StepwiseAddMonths(from, n, calendar))
            << year << " + " << n << " months in " << calendar;
    }
}

TEST(Date, ComparisonsOrderByDayNumberWithNullSmallest) {
    const CZRB_Date null, a(2000, 1, 1, G), b(2000, 1, 2, G);
    EXPECT_TRUE(null < a && a < b && b > a && a <= a && a >= a && a != b && a == CZRB_Date(a));
    EXPECT_FALSE(a < null || b <= a || a > b || a == b);
    EXPECT_EQ(CZRB_Date::SortCompare(a, b) * 10 + CZRB_Date::SortCompare(b, a), -9);
    EXPECT_EQ(CZRB_Date::SortCompare(null, CZRB_Date()), 0);
    CZRB_Date copy;
    const CZRB_Date now = CZRB_Date::GetCurrentDate();
    EXPECT_TRUE(copy.FromCurrentDate() == now || copy == now.AddDays(1)); // midnight
    EXPECT_GE(now.GetYear(G), 2024);
}

TEST(Date, ToStringDirectives) {
    const CZRB_Date date(2024, 3, 5, G);
    // clang-format off
    struct { const char* format; Cal calendar; const char* text; } const rows[] = {
        {"%D.%M.%Y", G, "05.03.2024"}, {"%d/%m/%y", G, "5/3/24"}, {"%Y-%M-%D", P, "1402-12-15"},
        {"%d.%m.%Y", I, "24.8.1445"}, {"100%% %q%", G, "100% %q"}, {"", G, ""}};
    // clang-format on
    for (const auto& r : rows)
        EXPECT_STREQ(date.ToString(r.format, r.calendar).GetStringC(), r.text) << r.format;
    EXPECT_STREQ(CZRB_Date(5, 1, 1, G).ToString("%y", G).GetStringC(), "5");
    EXPECT_STREQ(CZRB_Date(-2024, 1, 1, G).ToString("%y %Y", G).GetStringC(), "24 -2024");
    EXPECT_STREQ(CZRB_Date().ToString("%D.%M.%Y", G).GetStringC(), "00.00.0");
}
