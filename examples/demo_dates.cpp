#include "demo_sections.h"

#include "CZRB_Date.h"
#include "CZRB_Time.h"

#include <cstdio>

void DemoDates() {
    std::puts("== Dates and times ==");
    const CZRB_Date today = CZRB_Date::GetCurrentDate();
    static const char* const kNames[] = {"Gregorian", "Julian", "Revised Julian", "Persian",
                                         "Islamic"};
    for (int c = CZRB_Date::CALENDAR_GREGORIAN; c <= CZRB_Date::CALENDAR_ISLAMIC; ++c) {
        const auto calendar = static_cast<CZRB_Date::t_Calendar>(c);
        std::printf("today, %-14s %s (day %d of its year)\n", kNames[c],
                    today.ToString("%Y-%M-%D", calendar).GetStringC(),
                    today.GetDayOfyear(calendar));
    }
    const CZRB_Date gregorianReform(1582, 10, 15, CZRB_Date::CALENDAR_GREGORIAN);
    std::printf("Gregorian 1582-10-15 is Julian %s; %lld days ago; weekday %d\n",
                gregorianReform.ToString("%Y-%M-%D", CZRB_Date::CALENDAR_JULIAN).GetStringC(),
                gregorianReform.GetDaysTo(today),
                gregorianReform.GetWeekday(CZRB_Date::CALENDAR_GREGORIAN));
    const CZRB_Date endOfJanuary(2001, 1, 31, CZRB_Date::CALENDAR_GREGORIAN);
    std::printf("2001-01-31 plus one month: %s\n",
                endOfJanuary.AddMonths(1, CZRB_Date::CALENDAR_GREGORIAN)
                    .ToString("%Y-%M-%D", CZRB_Date::CALENDAR_GREGORIAN)
                    .GetStringC());

    const CZRB_Time now = CZRB_Time::GetCurrentTime();
    std::printf("now %s; 90000 s later %s\n", now.ToString("%H:%T:%S.%X").GetStringC(),
                now.AddSeconds(90000).ToString("%H:%T:%S.%X").GetStringC());
}
