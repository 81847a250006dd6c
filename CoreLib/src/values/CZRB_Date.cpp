#include "CZRB_Date.h"

#include "values/DirectiveText.h"

#include <climits>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>

namespace {

const __int64 kNullDay = LLONG_MIN;
const __int64 kFirstValidDay = -784350574879LL; // Gregorian -2147483648-01-01
const __int64 kLastValidDay = 784354017364LL;   // Gregorian 2147483647-12-31

bool IsKnownCalendar(int calendar) {
    return calendar >= CZRB_Date::CALENDAR_GREGORIAN && calendar <= CZRB_Date::CALENDAR_ISLAMIC;
}

// Division and remainder rounded towards minus infinity (divisor > 0).
__int64 FloorDiv(__int64 a, __int64 b) {
    const __int64 q = a / b;
    return (a % b != 0 && a < 0) ? q - 1 : q;
}

__int64 FloorMod(__int64 a, __int64 b) {
    return a - FloorDiv(a, b) * b;
}

// The low 32 bits of v as a two's complement value.
int Wrap32(__int64 v) {
    const unsigned int u = static_cast<unsigned int>(static_cast<unsigned __int64>(v));
    return u <= static_cast<unsigned int>(INT_MAX) ? static_cast<int>(u)
                                                   : -static_cast<int>(~u) - 1;
}

// The low 16 bits of v as a two's complement value.
__int64 Wrap16(__int64 v) {
    return FloorMod(v + 32768, 65536) - 32768;
}

// Years have no 0: year -1 is effective year 0, and so on downwards.
__int64 EffectiveYear(int year) {
    return year < 0 ? static_cast<__int64>(year) + 1 : year;
}

// Back from an effective year; false when the year does not fit 32 bits.
bool YearFromEffective(__int64 effective, int& year) {
    const __int64 y = effective <= 0 ? effective - 1 : effective;
    if (y < INT_MIN || y > INT_MAX)
        return false;
    year = static_cast<int>(y);
    return true;
}

// Days before month m (1..12) in a year that starts on 1 March (m = 0 for March).
__int64 DaysBeforeMarchMonth(__int64 m) {
    return (153 * m + 2) / 5;
}

// Day and month from a day index q (0-based) in a year counted from 1 March; returns 1 when
// the month lies in January or February, which belong to the following calendar year.
int FromMarchDayIndex(__int64 q, CZRB_Date::t_Date_Struct& date) {
    const __int64 m = (5 * q + 2) / 153; // 0 = March .. 11 = February
    date.day = static_cast<int>(q - DaysBeforeMarchMonth(m) + 1);
    date.month = static_cast<int>(m < 10 ? m + 3 : m - 9);
    return m < 10 ? 0 : 1;
}

// --- Inverses: day number to effective year, month and day ---

__int64 GregorianFromDay(__int64 jd, CZRB_Date::t_Date_Struct& date) {
    const __int64 a = jd + 32044; // days since 1 March -4800 (effective)
    const __int64 cycles = FloorDiv(4 * a + 3, 146097);
    const __int64 c = a - FloorDiv(146097 * cycles, 4);
    const __int64 y = FloorDiv(4 * c + 3, 1461);
    const __int64 q = c - FloorDiv(1461 * y, 4);
    return 100 * cycles + y - 4800 + FromMarchDayIndex(q, date);
}

__int64 JulianFromDay(__int64 jd, CZRB_Date::t_Date_Struct& date) {
    const __int64 c = jd + 32082; // days since 1 March -4800 (effective, Julian)
    const __int64 y = FloorDiv(4 * c + 3, 1461);
    const __int64 q = c - FloorDiv(1461 * y, 4);
    return y - 4800 + FromMarchDayIndex(q, date);
}

// Centuries of 328718 / 9 days, years of 36525 / 100 days, both counted from 1 March of
// effective year 0; each step takes the largest count whose start is not after the day.
__int64 RevisedJulianFromDay(__int64 jd, CZRB_Date::t_Date_Struct& date) {
    const __int64 n = jd - 1721120;
    const __int64 century = FloorDiv(9 * n + 2, 328718);
    const __int64 r = n - FloorDiv(328718 * century + 6, 9);
    const __int64 year = (100 * r + 99) / 36525;
    const __int64 q = r - 36525 * year / 100;
    return 100 * century + year + FromMarchDayIndex(q, date);
}

// Cycles of 1029983 days, then years of 365 + 683 / 2820 days from the cycle start
// (floor(Yc * 365.2421985815603) is exactly 365 Yc + floor(683 Yc / 2820) for Yc < 2820).
__int64 PersianFromDay(__int64 jd, CZRB_Date::t_Date_Struct& date) {
    const __int64 t = jd - 2121446; // days since 1 Farvardin of year 475
    const __int64 cycle = FloorDiv(t, 1029983);
    const __int64 r = t - 1029983 * cycle;
    const __int64 yc = (2820 * r + 2819) / 1029983;
    const __int64 q = r - (365 * yc + 683 * yc / 2820);
    if (q < 186) {
        date.month = static_cast<int>(q / 31 + 1);
        date.day = static_cast<int>(q % 31 + 1);
    } else {
        date.month = static_cast<int>((q - 186) / 30 + 7);
        date.day = static_cast<int>((q - 186) % 30 + 1);
    }
    return 475 + 2820 * cycle + yc;
}

__int64 IslamicYearStart(__int64 effectiveYear) {
    return FloorDiv(10631 * effectiveYear - 10617, 30);
}

__int64 IslamicFromDay(__int64 jd, CZRB_Date::t_Date_Struct& date) {
    const __int64 t = jd - 1948440; // days since 1-1-1
    const __int64 y = FloorDiv(30 * t + 10646, 10631);
    const __int64 q = t - IslamicYearStart(y);
    const __int64 m = (11 * q + 330) / 325;
    date.month = static_cast<int>(m);
    date.day = static_cast<int>(q - (325 * m - 320) / 11 + 1);
    return y;
}

// Steps `year` one further in the direction of `up`, wrapping at 32 bits.
int StepYear(int year, bool up) {
    return Wrap32(static_cast<__int64>(year) + (up ? 1 : -1));
}

// The opening shared by the month and year steps: an invalid date or one whose fields the
// calendar cannot give steps to the null date, a step of 0 to a copy; otherwise `date` holds
// the fields and the caller goes on.
bool StartStep(const CZRB_Date& from, int n, CZRB_Date::t_Calendar calendar,
               CZRB_Date::t_Date_Struct& date, CZRB_Date& early) {
    if (!from.IsValid() || (n != 0 && !from.GetDateStruct(date, calendar))) {
        early = CZRB_Date();
        return false;
    }
    if (n == 0) {
        early = from;
        return false;
    }
    return true;
}

} // namespace

// --- Construction ---

CZRB_Date::CZRB_Date() : m_julianDay(kNullDay) {}

CZRB_Date::CZRB_Date(int year, int month, int day, t_Calendar calendar) : m_julianDay(kNullDay) {
    Set(year, month, day, calendar);
}

CZRB_Date::CZRB_Date(const CZRB_Date& other) : CZRB_Object(other), m_julianDay(kNullDay) {
    DataCopy(other);
}

CZRB_Date::CZRB_Date(__int64 julianDay) : m_julianDay(julianDay) {}

CZRB_Date& CZRB_Date::operator=(const CZRB_Date& other) {
    DataCopy(other);
    return *this;
}

CZRB_Date::~CZRB_Date() = default;

void CZRB_Date::DataCopy(const CZRB_Date& other) {
    m_julianDay = other.m_julianDay;
}

unsigned int CZRB_Date::Set(int year, int month, int day, t_Calendar calendar) {
    const __int64 jd = DateToJulianDay(year, month, day, calendar);
    if (jd < kFirstValidDay || jd > kLastValidDay) {
        m_julianDay = kNullDay;
        return 0;
    }
    m_julianDay = jd;
    return 1;
}

unsigned char CZRB_Date::IsValid() const {
    return m_julianDay >= kFirstValidDay && m_julianDay <= kLastValidDay ? 1 : 0;
}

unsigned char CZRB_Date::IsNull() const {
    return IsValid() ? 0 : 1;
}

CZRB_Date CZRB_Date::CreateFromJulianDay(__int64 julianDay) {
    const CZRB_Date date(julianDay);
    return date.IsValid() ? date : CZRB_Date();
}

// --- Calendar rules ---

bool CZRB_Date::IsLeapYear(int year, t_Calendar calendar) {
    if (year == INT_MIN)
        return false;
    const __int64 y = EffectiveYear(year);
    switch (calendar) {
    case CALENDAR_GREGORIAN:
        return (FloorMod(y, 4) == 0 && FloorMod(y, 100) != 0) || FloorMod(y, 400) == 0;
    case CALENDAR_JULIAN: // by design year 0 is never a Julian leap year
        return year != 0 && FloorMod(y, 4) == 0;
    case CALENDAR_REVISED_JULIAN: {
        if (FloorMod(y, 4) != 0)
            return false;
        const __int64 centuryRest = FloorMod(FloorDiv(y, 100), 9);
        return FloorMod(y, 100) != 0 || centuryRest == 2 || centuryRest == 6;
    }
    case CALENDAR_PERSIAN:
        return FloorMod(Wrap32((y + 2346) * 683), 2820) < 683;
    case CALENDAR_ISLAMIC:
        return FloorMod(11 * y + 14, 30) < 11;
    }
    return false;
}

int CZRB_Date::GetDaysPerMonth(int month, int year, t_Calendar calendar) {
    if (!IsKnownCalendar(calendar) || year == 0 || month < 1 || month > 12)
        return 0;
    const bool leap = IsLeapYear(year, calendar);
    switch (calendar) {
    case CALENDAR_PERSIAN:
        if (month <= 6)
            return 31;
        return month <= 11 ? 30 : (leap ? 30 : 29);
    case CALENDAR_ISLAMIC:
        if (month == 12)
            return leap ? 30 : 29;
        return month % 2 == 1 ? 30 : 29;
    default: {
        static const int kLengths[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
        return month == 2 && leap ? 29 : kLengths[month - 1];
    }
    }
}

int CZRB_Date::GetDaysPerYear(int year, t_Calendar calendar) {
    if (!IsKnownCalendar(calendar) || year == 0)
        return 0;
    return IsLeapYear(year, calendar) ? 366 : 365;
}

int CZRB_Date::GetMonthsPerYear(int year, t_Calendar calendar) {
    return IsKnownCalendar(calendar) && year != 0 ? 12 : 0;
}

int CZRB_Date::GetDaysPerMonth(t_Calendar calendar) const {
    t_Date_Struct date;
    return GetDateStruct(date, calendar) ? GetDaysPerMonth(date.month, date.year, calendar) : 0;
}

int CZRB_Date::GetDaysPerYear(t_Calendar calendar) const {
    t_Date_Struct date;
    return GetDateStruct(date, calendar) ? GetDaysPerYear(date.year, calendar) : 0;
}

// Every month of every calendar has at least 28 days, so only later days need the month length.
bool CZRB_Date::IsValid(int year, int month, int day, t_Calendar calendar) {
    if (!IsKnownCalendar(calendar) || year == 0 || month < 1 || month > 12 || day < 1)
        return false;
    return day <= 28 || day <= GetDaysPerMonth(month, year, calendar);
}

// --- Conversions ---

__int64 CZRB_Date::DateToJulianDay(int year, int month, int day, t_Calendar calendar) {
    if (!IsValid(year, month, day, calendar))
        return kNullDay;
    const __int64 y = EffectiveYear(year);
    switch (calendar) {
    case CALENDAR_GREGORIAN: {
        const __int64 a = (14 - month) / 12;
        const __int64 Y = y + 4800 - a;
        const __int64 M = month + 12 * a - 3;
        return day + DaysBeforeMarchMonth(M) + 365 * Y + FloorDiv(Y, 4) - FloorDiv(Y, 100) +
               FloorDiv(Y, 400) - 32045;
    }
    case CALENDAR_JULIAN: {
        const __int64 a = month <= 2 ? -1 : 0;
        return day + (153 * (month - 12 * a) - 457) / 5 + FloorDiv(1461 * (y + a), 4) + 1721117;
    }
    case CALENDAR_REVISED_JULIAN: {
        const __int64 a = month <= 2 ? -1 : 0;
        const __int64 M = month - 12 * a - 3;
        const __int64 Y = Wrap16(y + a);
        const __int64 C = FloorDiv(Y, 100);
        const __int64 R = Y - 100 * C;
        return day + FloorDiv(328718 * C + 6, 9) + 36525 * R / 100 + DaysBeforeMarchMonth(M) +
               1721119;
    }
    case CALENDAR_PERSIAN: {
        const __int64 E = y - 475;
        const __int64 cycle = FloorDiv(E, 2820);
        const __int64 yc = E - 2820 * cycle;
        const __int64 before = month <= 7 ? 31 * (month - 1) : 186 + 30 * (month - 7);
        const double yearStart = std::floor(static_cast<double>(yc) * 365.2421985815603);
        return day + before + static_cast<__int64>(yearStart) + 1029983 * cycle + 2121445;
    }
    default: // CALENDAR_ISLAMIC (IsValid rejected every other value)
        return FloorDiv(static_cast<__int64>(Wrap32(10631 * y)) - 10617, 30) +
               (325 * month - 320) / 11 + day + 1948439;
    }
}

unsigned int CZRB_Date::GetDateStruct(t_Date_Struct& date, t_Calendar calendar) const {
    date.day = date.month = date.year = 0;
    if (!IsValid() || !IsKnownCalendar(calendar))
        return 0;
    t_Date_Struct result = {0, 0, 0};
    __int64 effectiveYear = 0;
    switch (calendar) {
    case CALENDAR_GREGORIAN:
        effectiveYear = GregorianFromDay(m_julianDay, result);
        break;
    case CALENDAR_JULIAN:
        effectiveYear = JulianFromDay(m_julianDay, result);
        break;
    case CALENDAR_REVISED_JULIAN:
        effectiveYear = RevisedJulianFromDay(m_julianDay, result);
        break;
    case CALENDAR_PERSIAN:
        effectiveYear = PersianFromDay(m_julianDay, result);
        break;
    default:
        effectiveYear = IslamicFromDay(m_julianDay, result);
        break;
    }
    if (!YearFromEffective(effectiveYear, result.year))
        return 0;
    date = result;
    return 1;
}

int CZRB_Date::GetYear(t_Calendar calendar) const {
    t_Date_Struct date;
    GetDateStruct(date, calendar);
    return date.year;
}

int CZRB_Date::GetMonth(t_Calendar calendar) const {
    t_Date_Struct date;
    GetDateStruct(date, calendar);
    return date.month;
}

int CZRB_Date::GetDay(t_Calendar calendar) const {
    t_Date_Struct date;
    GetDateStruct(date, calendar);
    return date.day;
}

int CZRB_Date::GetWeekday(t_Calendar calendar) const {
    if (!IsValid() || !IsKnownCalendar(calendar))
        return 0;
    return static_cast<int>(FloorMod(m_julianDay, 7)) + 1;
}

int CZRB_Date::GetDayOfyear(t_Calendar calendar) const {
    t_Date_Struct date;
    if (!GetDateStruct(date, calendar))
        return 0;
    int days = date.day;
    for (int month = 1; month < date.month; ++month)
        days += GetDaysPerMonth(month, date.year, calendar);
    return days;
}

__int64 CZRB_Date::GetDaysTo(const CZRB_Date& other) const {
    if (!IsValid() || !other.IsValid())
        return 0;
    return other.m_julianDay - m_julianDay;
}

// --- Arithmetic ---

CZRB_Date CZRB_Date::AddDays(__int64 n) const {
    if (!IsValid())
        return CZRB_Date();
    // Both operands are bounded, so only n needs a range test before the sum.
    if (n > kLastValidDay - m_julianDay || n < kFirstValidDay - m_julianDay)
        return CZRB_Date();
    return CZRB_Date(m_julianDay + n);
}

// The month loop steps whole years: downwards each non-zero year adds 12 months, upwards each
// non-zero year takes 12 away; year 0 is passed without changing the month. Computed in closed
// form, the year wrapping at 32 bits as the stepwise loop does.
CZRB_Date CZRB_Date::AddMonths(int n, t_Calendar calendar) const {
    t_Date_Struct date;
    CZRB_Date early;
    if (!StartStep(*this, n, calendar, date, early))
        return early;
    const __int64 month = Wrap32(static_cast<__int64>(date.month) + n);
    __int64 year = date.year;
    __int64 targetMonth = month;
    if (month < 1) {
        const __int64 years = (12 - month) / 12;
        targetMonth = month + 12 * years;
        const bool crossesZero = year > 0 && year - years <= 0;
        year -= years + (crossesZero ? 1 : 0);
    } else if (month > 12) {
        const __int64 years = (month - 1) / 12;
        targetMonth = month - 12 * years;
        const bool crossesZero = year < 0 && year + years >= 0;
        year += years + (crossesZero ? 1 : 0);
    }
    const int newYear = Wrap32(year);
    const int newMonth = static_cast<int>(targetMonth);
    const int days = GetDaysPerMonth(newMonth, newYear, calendar);
    return CZRB_Date(newYear, newMonth, date.day < days ? date.day : days, calendar);
}

CZRB_Date CZRB_Date::AddYears(int n, t_Calendar calendar) const {
    t_Date_Struct date;
    CZRB_Date early;
    if (!StartStep(*this, n, calendar, date, early))
        return early;
    int year = Wrap32(static_cast<__int64>(date.year) + n);
    const bool otherSide = (date.year > 0 && year < 0) || (date.year < 0 && year > 0);
    if (year == 0 || otherSide)
        year = StepYear(year, n > 0);
    if (year == 0)
        return CZRB_Date();
    const int days = GetDaysPerMonth(date.month, year, calendar);
    return CZRB_Date(year, date.month, date.day < days ? date.day : days, calendar);
}

// --- Current date ---

CZRB_Date& CZRB_Date::FromCurrentDate() {
    DataCopy(GetCurrentDate());
    return *this;
}

CZRB_Date CZRB_Date::GetCurrentDate() {
    const std::time_t now = std::time(nullptr);
    std::tm local = {};
    if (now == static_cast<std::time_t>(-1) || localtime_r(&now, &local) == nullptr)
        return CZRB_Date();
    const __int64 year = static_cast<__int64>(local.tm_year) + 1900;
    if (year < INT_MIN || year > INT_MAX)
        return CZRB_Date();
    return CZRB_Date(static_cast<int>(year), local.tm_mon + 1, local.tm_mday, CALENDAR_GREGORIAN);
}

// --- Comparison ---

unsigned char CZRB_Date::operator==(const CZRB_Date& other) const {
    return m_julianDay == other.m_julianDay ? 1 : 0;
}

unsigned char CZRB_Date::operator!=(const CZRB_Date& other) const {
    return m_julianDay != other.m_julianDay ? 1 : 0;
}

unsigned char CZRB_Date::operator<(const CZRB_Date& other) const {
    return m_julianDay < other.m_julianDay ? 1 : 0;
}

unsigned char CZRB_Date::operator<=(const CZRB_Date& other) const {
    return m_julianDay <= other.m_julianDay ? 1 : 0;
}

unsigned char CZRB_Date::operator>(const CZRB_Date& other) const {
    return m_julianDay > other.m_julianDay ? 1 : 0;
}

unsigned char CZRB_Date::operator>=(const CZRB_Date& other) const {
    return m_julianDay >= other.m_julianDay ? 1 : 0;
}

signed char CZRB_Date::SortCompare(const CZRB_Date& a, const CZRB_Date& b) {
    if (a.m_julianDay == b.m_julianDay)
        return 0;
    return a.m_julianDay > b.m_julianDay ? 1 : -1;
}

// --- Text and stream ---

CZRB_String CZRB_Date::ToString(const CZRB_String& format, t_Calendar calendar) const {
    t_Date_Struct date;
    GetDateStruct(date, calendar);
    return ZRB_Detail::ExpandDirectives(format, [&date](char directive, char* field) {
        const size_t size = ZRB_Detail::DIRECTIVE_FIELD_SIZE;
        switch (directive) {
        case 'd':
        case 'D':
            std::snprintf(field, size, "%0*d", directive == 'D' ? 2 : 0, date.day);
            return true;
        case 'm':
        case 'M':
            std::snprintf(field, size, "%0*d", directive == 'M' ? 2 : 0, date.month);
            return true;
        case 'y': {
            // Through unsigned, so that the smallest year has a magnitude too.
            const unsigned int magnitude = date.year < 0 ? 0U - static_cast<unsigned int>(date.year)
                                                         : static_cast<unsigned int>(date.year);
            std::snprintf(field, size, "%u", magnitude);
            const size_t digits = std::strlen(field);
            if (digits >= 2)
                std::memmove(field, field + digits - 2, 3);
            return true;
        }
        case 'Y':
            std::snprintf(field, size, "%d", date.year);
            return true;
        default:
            return false;
        }
    });
}

CZRB_Buffer& operator<<(CZRB_Buffer& buffer, CZRB_Date& date) {
    return buffer << date.m_julianDay;
}

CZRB_Buffer& operator>>(CZRB_Buffer& buffer, CZRB_Date& date) {
    __int64 julianDay = 0;
    buffer >> julianDay;
    date.m_julianDay = julianDay;
    return buffer;
}

// --- Named containers ---

template class CZRB_Vector<CZRB_Date>;
template class CZRB_List<CZRB_Date>;

CZRB_DateVector::~CZRB_DateVector() = default;
CZRB_DateList::~CZRB_DateList() = default;
