// Dates and times: one day number shown in five calendars, date arithmetic, times of day.
#include <CZRB_Date.h>
#include <CZRB_Time.h>

#include <cstdio>

int main() {
    const char* names[] = {"Gregorian", "Julian", "Revised Julian", "Persian", "Islamic"};
    const CZRB_Date leapDay(2024, 2, 29, CZRB_Date::CALENDAR_GREGORIAN);
    for (int c = CZRB_Date::CALENDAR_GREGORIAN; c <= CZRB_Date::CALENDAR_ISLAMIC; ++c) {
        const auto calendar = static_cast<CZRB_Date::t_Calendar>(c);
        std::printf("%-15s %s\n", names[c], leapDay.ToString("%Y-%M-%D", calendar).GetStringC());
    }
    const auto gregorian = CZRB_Date::CALENDAR_GREGORIAN;
    std::printf("weekday %d (1 is Monday), day %d of the year\n", leapDay.GetWeekday(gregorian),
                leapDay.GetDayOfyear(gregorian));
    std::printf("one year later: %s (the day is clamped to the month)\n",
                leapDay.AddYears(1, gregorian).ToString("%Y-%M-%D", gregorian).GetStringC());

    const CZRB_Date first(1, 1, 1, gregorian); // there is no year 0
    std::printf("the day before 1-01-01 is %s; days between: %lld\n",
                first.AddDays(-1).ToString("%Y-%M-%D", gregorian).GetStringC(),
                first.GetDaysTo(leapDay));
    std::printf("2023-02-29 is null: %u\n", CZRB_Date(2023, 2, 29, gregorian).IsNull());

    const CZRB_Time late(23, 59, 30, 250);
    const CZRB_Time after = late.AddSeconds(45); // wraps at midnight
    std::printf("%s + 45 s = %s, %d ms apart\n", late.ToString("%H:%T:%S.%X").GetStringC(),
                after.ToString("%H:%T:%S.%X").GetStringC(), late.MillisecondsTo(after));
    return 0;
}
