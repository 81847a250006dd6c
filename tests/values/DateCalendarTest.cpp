// Day number <-> calendar date in all five calendars: exhaustive walk and span-wide samples.
#include "CZRB_Date.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace {

struct DateProbe : CZRB_Date {
    using CZRB_Date::CreateFromJulianDay;
    using CZRB_Date::DateToJulianDay;
};

using Cal = CZRB_Date::t_Calendar;
const Cal kCalendars[] = {CZRB_Date::CALENDAR_GREGORIAN, CZRB_Date::CALENDAR_JULIAN,
                          CZRB_Date::CALENDAR_REVISED_JULIAN, CZRB_Date::CALENDAR_PERSIAN,
                          CZRB_Date::CALENDAR_ISLAMIC};
const long long kFirst = -784350574879LL;
const long long kLast = 784354017364LL;

// Years within which the day-number formula does not wrap, per calendar.
const long long kFaithfulYears[] = {2147483647, 2147483647, 32767, 3000000, 202000};

CZRB_Date::t_Date_Struct NextDay(CZRB_Date::t_Date_Struct d, Cal calendar) {
    if (++d.day > 28 && d.day > CZRB_Date::GetDaysPerMonth(d.month, d.year, calendar)) {
        d.day = 1;
        if (++d.month > 12) {
            d.month = 1;
            d.year = d.year == -1 ? 1 : d.year + 1;
        }
    }
    return d;
}

bool Same(const CZRB_Date::t_Date_Struct& a, const CZRB_Date::t_Date_Struct& b) {
    return a.day == b.day && a.month == b.month && a.year == b.year;
}

} // namespace

class DateWalk : public testing::TestWithParam<Cal> {};

TEST_P(DateWalk, EveryDayOfYearsMinus3000To3000RoundTrips) {
    const Cal calendar = GetParam();
    const long long first = DateProbe::DateToJulianDay(-3000, 1, 1, calendar);
    const long long end = DateProbe::DateToJulianDay(3001, 1, 1, calendar);
    CZRB_Date::t_Date_Struct expected = {1, 1, -3000};
    CZRB_Date::t_Date_Struct got = {0, 0, 0};
    for (long long jd = first; jd < end; ++jd) {
        const unsigned int ok = DateProbe::CreateFromJulianDay(jd).GetDateStruct(got, calendar);
        if (!ok || !Same(got, expected) ||
            DateProbe::DateToJulianDay(got.year, got.month, got.day, calendar) != jd) {
            ADD_FAILURE() << "calendar " << calendar << ", day " << jd;
            break;
        }
        expected = NextDay(got, calendar);
    }
    EXPECT_TRUE(expected.year == 3001 && expected.month == 1 && expected.day == 1) << calendar;
}

INSTANTIATE_TEST_SUITE_P(Calendars, DateWalk, testing::ValuesIn(kCalendars));

TEST(DateCalendar, SamplesAcrossTheWholeSpanAreConsecutiveAndRoundTrip) {
    std::mt19937_64 random(20240229);
    std::uniform_real_distribution<double> magnitude(0.0, std::log(double(kLast)));
    for (int i = 0; i < 20000; ++i) {
        long long jd = static_cast<long long>(std::exp(magnitude(random)));
        jd = (i % 2 ? jd : -jd) + 2451545;
        if (i < 4)
            jd = i < 2 ? kFirst + i : kLast - i + 1; // the ends themselves
        if (jd < kFirst || jd >= kLast)
            continue;
        for (Cal calendar : kCalendars) {
            CZRB_Date::t_Date_Struct d, next;
            if (!DateProbe::CreateFromJulianDay(jd).GetDateStruct(d, calendar)) {
                // Only the shorter mean years leave the 32-bit range, near the ends.
                EXPECT_TRUE(calendar >= CZRB_Date::CALENDAR_REVISED_JULIAN &&
                            std::llabs(jd) > 7e11);
                continue;
            }
            ASSERT_TRUE(DateProbe::CreateFromJulianDay(jd + 1).GetDateStruct(next, calendar));
            if (std::llabs(d.year) > kFaithfulYears[calendar])
                continue;
            ASSERT_TRUE(Same(NextDay(d, calendar), next)) << calendar << " " << jd;
            ASSERT_EQ(DateProbe::DateToJulianDay(d.year, d.month, d.day, calendar), jd) << calendar;
        }
    }
}

TEST(DateCalendar, SpanEndsAndWrappingYearFormulas) {
    const Cal G = CZRB_Date::CALENDAR_GREGORIAN, J = CZRB_Date::CALENDAR_JULIAN,
              RJ = CZRB_Date::CALENDAR_REVISED_JULIAN, I = CZRB_Date::CALENDAR_ISLAMIC;
    const CZRB_Date first(-2147483647 - 1, 1, 1, G), last(2147483647, 12, 31, G);
    EXPECT_EQ(first.GetDaysTo(last), kLast - kFirst);
    EXPECT_TRUE(first.AddDays(-1).IsNull() && last.AddDays(1).IsNull());
    EXPECT_TRUE(first.AddDays(kLast - kFirst) == last && last.AddDays(-kLast - 1).IsValid());
    EXPECT_TRUE(last.AddDays(-9223372036854775807LL).IsNull());
    EXPECT_TRUE(CZRB_Date(2147483647, 12, 31, J).IsNull());
    EXPECT_EQ(last.GetYear(CZRB_Date::CALENDAR_PERSIAN) + first.GetYear(I), 0);
    EXPECT_EQ(last.GetYear(J), 2147439551);
    // Revised Julian years are taken in 16 bits: a year and the year 65536 earlier coincide.
    EXPECT_TRUE(CZRB_Date(40000, 6, 1, RJ) == CZRB_Date(40000 - 65536 - 1, 6, 1, RJ));
    // Islamic 10631 * y' wraps at 32 bits; the inverse keeps the calendar's own dates.
    EXPECT_NE(CZRB_Date(300000, 1, 1, I).GetYear(I), 300000);
    EXPECT_EQ(CZRB_Date(200000, 3, 4, I).GetYear(I), 200000);
}
