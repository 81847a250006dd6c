/// @file
/// CZRB_Date: a calendar date held as a Julian Day Number, shown in five calendars.
///
/// Also declared here: the stream record operators and the named containers CZRB_DateVector and
/// CZRB_DateList, which the library instantiates.
#ifndef CZRB_DATE_H
#define CZRB_DATE_H

#include "CZRB_Buffer.h"
#include "CZRB_List.h"
#include "CZRB_Object.h"
#include "CZRB_String.h"
#include "CZRB_Vector.h"
#include "LZRB_NamedContainer.h"

class CZRB_Date;

/// Writes the date's record: its day number as one signed 64-bit value (the null marker for a
/// null date). Returns the stream; the stream's own codes (23) propagate.
/// @relatesalso CZRB_Date
LZRB_API CZRB_Buffer& operator<<(CZRB_Buffer& buffer, CZRB_Date& date);
/// Reads a record written by operator<< into the date, unchecked; returns the stream. A short
/// stream throws the stream's code 3 (24 when not readable) and leaves the date unchanged.
/// @relatesalso CZRB_Date
LZRB_API CZRB_Buffer& operator>>(CZRB_Buffer& buffer, CZRB_Date& date);

/// A calendar date held as a Julian Day Number, shown in five calendars.
///
/// JD 0 is Monday 1 January 4713 BC (Julian); Gregorian 2000-01-01 is 2451545. Years have no
/// year 0: year -1 immediately precedes year 1. No operation throws: bad input gives the null
/// date, 0 or false.
class LZRB_API CZRB_Date : public CZRB_Object {
public:
    /// The calendars a stored day number can be read and written in. Every function rejects
    /// any other value (its result is then 0, false or the null date).
    enum t_Calendar : int {
        CALENDAR_GREGORIAN = 0,      ///< the Gregorian calendar
        CALENDAR_JULIAN = 1,         ///< the Julian calendar
        CALENDAR_REVISED_JULIAN = 2, ///< the Revised Julian calendar
        CALENDAR_PERSIAN = 3,        ///< arithmetic solar calendar with a 2820-year cycle
        CALENDAR_ISLAMIC = 4         ///< tabular, 30-year cycle of 11 leap years
    };

    /// Day, month and year of a date in one calendar.
    struct t_Date_Struct {
        int day;   ///< day of the month, from 1
        int month; ///< month of the year, from 1
        int year;  ///< the year; there is no year 0
    };

    /// The null date (the smallest signed 64-bit day number).
    CZRB_Date();
    /// Set(year, month, day, calendar): the null date when that is not a valid date.
    CZRB_Date(int year, int month, int day, t_Calendar calendar);
    /// Copies the day number.
    CZRB_Date(const CZRB_Date& other);
    /// Copies the day number; returns this date.
    CZRB_Date& operator=(const CZRB_Date& other);
    /// Does nothing beyond the base.
    ~CZRB_Date() override;

    /// 1 and this date set when the calendar is known, the year non-zero and the day within
    /// the month, and the day number lies in the valid span; otherwise 0 and the date is null.
    unsigned int Set(int year, int month, int day, t_Calendar calendar);

    /// 1 when the day number lies in -784350574879 .. 784354017364 (the 32-bit Gregorian
    /// years), else 0.
    unsigned char IsValid() const;
    /// The exact negation of IsValid(): also 1 for a number outside the span.
    unsigned char IsNull() const;

    /// Days of the month (1..12) of the year; 0 for another month, year 0 or an unknown
    /// calendar.
    static int GetDaysPerMonth(int month, int year, t_Calendar calendar);
    /// 366 for a leap year, else 365 (also for the Islamic calendar, as shipped, although its
    /// months add up to 355 or 354); 0 for year 0 or an unknown calendar.
    static int GetDaysPerYear(int year, t_Calendar calendar);
    /// 12 for every non-zero year of a known calendar; 0 otherwise.
    static int GetMonthsPerYear(int year, t_Calendar calendar);
    /// GetDaysPerMonth of this date's month and year in the calendar; 0 for an invalid date.
    int GetDaysPerMonth(t_Calendar calendar) const;
    /// GetDaysPerYear of this date's year in the calendar; 0 for an invalid date.
    int GetDaysPerYear(t_Calendar calendar) const;

    /// Fills day, month and year of this date in the calendar and returns 1: the one date
    /// whose day number this is. Returns 0 with all three fields 0 for an invalid date, an
    /// unknown calendar, or a year that does not fit 32 bits (Revised Julian, Persian and
    /// Islamic years near the ends of the span). Where the day-number formula wraps (Revised
    /// Julian years beyond +-32767, Persian leap rule beyond about +-3 million years, Islamic
    /// years beyond +-202002) the result is the date of the calendar's own rules, which Set maps
    /// elsewhere.
    unsigned int GetDateStruct(t_Date_Struct& date, t_Calendar calendar) const;
    /// The year of GetDateStruct; 0 when it fails.
    int GetYear(t_Calendar calendar) const;
    /// The month of GetDateStruct; 0 when it fails.
    int GetMonth(t_Calendar calendar) const;
    /// The day of GetDateStruct; 0 when it fails.
    int GetDay(t_Calendar calendar) const;
    /// 1 = Monday .. 7 = Sunday (day number mod 7, floored, plus 1) in every calendar; 0 for an
    /// invalid date or an unknown calendar.
    int GetWeekday(t_Calendar calendar) const;
    /// Position of the day in its year, 1 for the first day of month 1; 0 when invalid.
    int GetDayOfyear(t_Calendar calendar) const;
    /// Other's day number minus this one's; 0 when either date is invalid.
    __int64 GetDaysTo(const CZRB_Date& other) const;

    /// This date moved by n days; null when this date is invalid or the result leaves the span.
    CZRB_Date AddDays(__int64 n) const;
    /// This date moved by n months in the calendar, stepping over year 0 and clamping the day
    /// to the target month; null when invalid, a copy when n is 0. The month sum wraps at 32
    /// bits, as shipped.
    CZRB_Date AddMonths(int n, t_Calendar calendar) const;
    /// This date moved by n years in the calendar, stepping over year 0 and clamping the day
    /// to the same month of the new year; null when invalid or when the year ends on 0, a copy
    /// when n is 0. The year sum wraps at 32 bits, as shipped.
    CZRB_Date AddYears(int n, t_Calendar calendar) const;

    /// Sets this date to GetCurrentDate() and returns it.
    CZRB_Date& FromCurrentDate();
    /// Today's local wall-clock date (Gregorian); null when the clock gives no valid date.
    static CZRB_Date GetCurrentDate();

    /// @name Comparisons by the signed day number (the null marker is the smallest)
    /// @{

    /// 1 when both hold the same day number, else 0.
    unsigned char operator==(const CZRB_Date& other) const;
    /// 1 when the day numbers differ, else 0.
    unsigned char operator!=(const CZRB_Date& other) const;
    /// 1 when this orders before other, else 0.
    unsigned char operator<(const CZRB_Date& other) const;
    /// 1 when this orders before other or with it, else 0.
    unsigned char operator<=(const CZRB_Date& other) const;
    /// 1 when this orders after other, else 0.
    unsigned char operator>(const CZRB_Date& other) const;
    /// 1 when this orders after other or with it, else 0.
    unsigned char operator>=(const CZRB_Date& other) const;
    /// -1, 0 or +1 as a orders before, with or after b by day number.
    static signed char SortCompare(const CZRB_Date& a, const CZRB_Date& b);
    /// @}

    /// The format copied character by character with directives of GetDateStruct's fields:
    /// `%d`/`%D` day, `%m`/`%M` month (upper case pads to two digits), `%y` the year's absolute
    /// value cut to its last two digits, `%Y` the year with its sign, `%%` a percent sign.
    /// Another directive is copied with its "%"; a "%" at the end produces nothing. A date
    /// GetDateStruct cannot show prints its fields as 0.
    CZRB_String ToString(const CZRB_String& format, t_Calendar calendar) const;

protected:
    /// Copies the day number of other.
    void DataCopy(const CZRB_Date& other);
    /// Leap year of the calendar's rule on the effective year; false for year -2147483648, an
    /// unknown calendar and, by design, Julian year 0 (its effective year 0 would be leap). The
    /// Persian product (y' + 2346) * 683 wraps at 32 bits, as shipped.
    static bool IsLeapYear(int year, t_Calendar calendar);
    /// True when the calendar is known, the year non-zero, the day at least 1 and within the
    /// month.
    static bool IsValid(int year, int month, int day, t_Calendar calendar);
    /// Day number of the date, or the null marker when IsValid(...) fails. The span is not
    /// checked here. Kept as shipped: the Revised Julian year is taken in 16 bits and the
    /// Islamic product 10631 * y' in 32 bits, both wrapping.
    static __int64 DateToJulianDay(int year, int month, int day, t_Calendar calendar);
    /// A date holding the number when it lies in the valid span, else the null date.
    static CZRB_Date CreateFromJulianDay(__int64 julianDay);

private:
    friend CZRB_Buffer& operator<<(CZRB_Buffer& buffer, CZRB_Date& date);
    friend CZRB_Buffer& operator>>(CZRB_Buffer& buffer, CZRB_Date& date);

    /// Holds the number as it is, without any check.
    explicit CZRB_Date(__int64 julianDay);

    __int64 m_julianDay;
};

extern template class LZRB_API CZRB_Vector<CZRB_Date>;
extern template class LZRB_API CZRB_List<CZRB_Date>;

/// A vector of dates (default elements: null dates) sorted by CZRB_Date::SortCompare (non-zero
/// ascending: the earliest first).
class LZRB_API CZRB_DateVector : public CZRB_Vector<CZRB_Date> {
    LZRB_NAMED_VECTOR_MEMBERS(CZRB_DateVector, CZRB_Vector<CZRB_Date>, CZRB_Date)
    LZRB_NAMED_SORT(CZRB_DateVector, CZRB_Vector<CZRB_Date>, CZRB_Date::SortCompare)
};

/// A list of dates sorted by CZRB_Date::SortCompare (non-zero ascending: the earliest first).
class LZRB_API CZRB_DateList : public CZRB_List<CZRB_Date> {
    LZRB_NAMED_LIST_MEMBERS(CZRB_DateList, CZRB_List<CZRB_Date>, CZRB_Date)
    LZRB_NAMED_SORT(CZRB_DateList, CZRB_List<CZRB_Date>, CZRB_Date::SortCompare)
};

#endif
