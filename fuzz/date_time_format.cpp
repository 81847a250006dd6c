// Date and time formats from outside: ToString expands every format as the documented
// directives do (zero-padded upper-case forms, "%y" cut to two characters, "%%", any other
// directive copied with its "%", a final "%" dropped), for any date in any calendar and for
// null values. The values behind the text are checked as well: a date's fields make the same
// date again where the calendar's formula does not wrap, weekdays, day of year, day, month and
// year steps agree with the day count, and millisecond and second steps wrap at midnight.
#include "CZRB_Date.h"
#include "CZRB_Time.h"
#include "FuzzSupport.h"

namespace {

const long long kDay = 86400000;

std::string Printed(const char* format, long long value) {
    char text[32];
    std::snprintf(text, sizeof(text), format, value);
    return text;
}

// The format expanded with `expand`, which returns the text of one directive character.
template <class Expand>
std::string ModelFormat(const std::string& format, Expand expand) {
    std::string text;
    for (std::size_t i = 0; i < format.size(); ++i) {
        if (format[i] != '%') {
            text += format[i];
        } else if (++i < format.size()) {
            text += expand(format[i]);
        }
    }
    return text;
}

std::string DateDirective(char c, const CZRB_Date::t_Date_Struct& date) {
    switch (c) {
    case 'd':
        return Printed("%lld", date.day);
    case 'D':
        return Printed("%02lld", date.day);
    case 'm':
        return Printed("%lld", date.month);
    case 'M':
        return Printed("%02lld", date.month);
    case 'y': {
        const std::string year = Printed("%lld", date.year < 0 ? -1LL * date.year : date.year);
        return year.size() >= 2 ? year.substr(year.size() - 2) : year;
    }
    case 'Y':
        return Printed("%lld", date.year);
    case '%':
        return "%";
    default:
        return std::string("%") + c;
    }
}

std::string TimeDirective(char c, const CZRB_Time::t_Date_Struct& time) {
    const char* const lower = "htsx";
    const char* const upper = "HTSX";
    const char* const padded[] = {"%02lld", "%02lld", "%02lld", "%03lld"};
    const long long parts[] = {time.hour, time.minute, time.second, time.millisecond};
    for (int i = 0; i < 4; ++i) {
        if (c == lower[i]) {
            return Printed("%lld", parts[i]);
        }
        if (c == upper[i]) {
            return Printed(padded[i], parts[i]);
        }
    }
    return c == '%' ? "%" : std::string("%") + c;
}

// Years inside which the calendar's day-number formula does not wrap.
bool RoundTrips(int year, int calendar) {
    const long long magnitude = year < 0 ? -1LL * year : year;
    switch (calendar) {
    case CZRB_Date::CALENDAR_REVISED_JULIAN:
        return magnitude < 32000;
    case CZRB_Date::CALENDAR_PERSIAN:
        return magnitude < 3000000;
    case CZRB_Date::CALENDAR_ISLAMIC:
        return magnitude < 200000;
    default:
        return true;
    }
}

void CheckDate(const CZRB_Date& date, int calendarValue, long long step, int count,
               const std::string& format) {
    const auto calendar = static_cast<CZRB_Date::t_Calendar>(calendarValue);
    CZRB_Date::t_Date_Struct fields{-1, -1, -1};
    const unsigned int shown = date.GetDateStruct(fields, calendar);
    FUZZ_CHECK(shown == 1 || (fields.day == 0 && fields.month == 0 && fields.year == 0));
    const std::string text = FromLib(date.ToString(ToLib(format), calendar));
    FUZZ_CHECK(text == ModelFormat(format, [&](char c) { return DateDirective(c, fields); }));
    const bool known = calendarValue >= 0 && calendarValue <= 4;
    if (!date.IsValid() || !known) {
        FUZZ_CHECK(shown == 0 && date.GetWeekday(calendar) == 0);
        return;
    }
    FUZZ_CHECK(shown == 1 || calendar != CZRB_Date::CALENDAR_GREGORIAN);
    const CZRB_Date reference(2000, 1, 1, CZRB_Date::CALENDAR_GREGORIAN); // day 2451545
    const long long day = 2451545 + reference.GetDaysTo(date);
    FUZZ_CHECK(date.GetWeekday(calendar) == ((day % 7) + 7) % 7 + 1);
    const CZRB_Date later = date.AddDays(step);
    FUZZ_CHECK(later.IsNull() || date.GetDaysTo(later) == step);
    if (shown == 0 || !RoundTrips(fields.year, calendar)) {
        return;
    }
    FUZZ_CHECK(fields.month >= 1 && fields.month <= 12 && fields.day >= 1 &&
               fields.day <= CZRB_Date::GetDaysPerMonth(fields.month, fields.year, calendar));
    FUZZ_CHECK(CZRB_Date(fields.year, fields.month, fields.day, calendar) == date);
    const int dayOfYear = date.GetDayOfyear(calendar);
    const CZRB_Date newYear = date.AddDays(1 - dayOfYear); // null before the span's start
    FUZZ_CHECK(dayOfYear >= 1 && dayOfYear <= 366);
    FUZZ_CHECK(newYear.IsNull() ||
               (newYear.GetDay(calendar) == 1 && newYear.GetMonth(calendar) == 1 &&
                newYear.GetYear(calendar) == fields.year));

    // Years step over year 0 and keep the month; the day is clamped to the month's length.
    long long year = static_cast<long long>(fields.year) + count;
    if (year == 0 || (year > 0) != (fields.year > 0)) {
        year += count > 0 ? 1 : -1;
    }
    const CZRB_Date moved = date.AddYears(count, calendar);
    if (count != 0 && moved.IsValid() && year == static_cast<int>(year) &&
        RoundTrips(static_cast<int>(year), calendar)) {
        const int length =
            CZRB_Date::GetDaysPerMonth(fields.month, static_cast<int>(year), calendar);
        FUZZ_CHECK(moved.GetYear(calendar) == year && moved.GetMonth(calendar) == fields.month);
        FUZZ_CHECK(moved.GetDay(calendar) == (fields.day < length ? fields.day : length));
    }
    // Months step over year 0 too: in effective years (year -1 is 0) the count is continuous.
    // Kept as shipped: the month sum wraps at 32 bits.
    const int monthSum = static_cast<int>(static_cast<unsigned int>(fields.month) +
                                          static_cast<unsigned int>(count));
    const long long months = monthSum - 1LL;
    const long long effective = (fields.year < 0 ? fields.year + 1 : fields.year) +
                                (months >= 0 ? months / 12 : -((11 - months) / 12));
    const long long targetYear = effective > 0 ? effective : effective - 1;
    const CZRB_Date monthLater = date.AddMonths(count, calendar);
    if (monthLater.IsValid() && targetYear == static_cast<int>(targetYear) &&
        RoundTrips(static_cast<int>(targetYear), calendar)) {
        const int targetMonth = static_cast<int>(((months % 12) + 12) % 12) + 1;
        const int length =
            CZRB_Date::GetDaysPerMonth(targetMonth, static_cast<int>(targetYear), calendar);
        FUZZ_CHECK(monthLater.GetYear(calendar) == targetYear &&
                   monthLater.GetMonth(calendar) == targetMonth);
        FUZZ_CHECK(monthLater.GetDay(calendar) == (fields.day < length ? fields.day : length));
    }
}

void CheckTime(const CZRB_Time& time, int step, int seconds, const std::string& format) {
    CZRB_Time::t_Date_Struct parts{0, 0, 0, 0};
    const unsigned int shown = time.GetTimeStruct(parts);
    FUZZ_CHECK(shown == (time.IsValid() ? 0U : 32U));
    const std::string text = FromLib(time.ToString(ToLib(format)));
    FUZZ_CHECK(text == ModelFormat(format, [&](char c) { return TimeDirective(c, parts); }));
    if (time.IsNull()) {
        FUZZ_CHECK(time.AddMilliseconds(step).IsNull() && time.AddSeconds(seconds).IsNull());
        return;
    }
    const long long count =
        ((parts.hour * 60LL + parts.minute) * 60 + parts.second) * 1000 + parts.millisecond;
    // Kept as shipped: the sums are 32-bit, so steps close to the 32-bit limits shift.
    if (step > -1900000000 && step < 1900000000) {
        const CZRB_Time later = time.AddMilliseconds(step);
        FUZZ_CHECK(time.MillisecondsTo(later) == ((count + step) % kDay + kDay) % kDay - count);
        FUZZ_CHECK(later.AddMilliseconds(-step) == time);
    }
    const CZRB_Time moved = time.AddSeconds(seconds);
    FUZZ_CHECK(moved.IsValid() && moved == time.AddMilliseconds(seconds % 86400 * 1000));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    // Day counts from 2000-01-01 mostly inside the valid span, now and then anywhere.
    const long long raw = input.Take<long long>();
    const long long days = (raw & 1) ? raw : (raw >> 1) % 800000000000LL;
    const int calendar = static_cast<int>(input.TakeInRange(0, 6)) - 1;
    const long long step = input.Take<std::int32_t>();
    const int count = input.Take<std::int32_t>() >> input.TakeInRange(0, 31);
    const int hour = static_cast<int>(input.TakeInRange(0, 25)) - 1;
    const int minute = static_cast<int>(input.TakeInRange(0, 61)) - 1;
    const int second = static_cast<int>(input.TakeInRange(0, 61)) - 1;
    const int millisecond = static_cast<int>(input.TakeInRange(0, 1001)) - 1;
    const std::string format = input.TakeRest();

    const CZRB_Date date = CZRB_Date(2000, 1, 1, CZRB_Date::CALENDAR_GREGORIAN).AddDays(days);
    CheckDate(date, calendar, step, count, format);
    const CZRB_Time time(hour, minute, second, millisecond);
    const bool inRange = hour >= 0 && hour < 24 && minute >= 0 && minute < 60 && second >= 0 &&
                         second < 60 && millisecond >= 0 && millisecond < 1000;
    FUZZ_CHECK(time.IsValid() == inRange && (!inRange || time.GetMillisecond() == millisecond));
    CheckTime(time, static_cast<int>(step), count, format);
    return 0;
}
