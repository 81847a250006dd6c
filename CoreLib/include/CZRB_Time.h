/// @file
/// CZRB_Time: a time of day in milliseconds since midnight, without date or time zone.
///
/// Also declared here: the stream record operators and the named containers CZRB_TimeVector and
/// CZRB_TimeList, which the library instantiates.
#ifndef CZRB_TIME_H
#define CZRB_TIME_H

#include "CZRB_Buffer.h"
#include "CZRB_List.h"
#include "CZRB_Object.h"
#include "CZRB_String.h"
#include "CZRB_Vector.h"
#include "LZRB_NamedContainer.h"

class CZRB_Time;

/// Writes the time's record: its millisecond count as one signed 32-bit value (-1 for a null
/// time). Returns the stream; the stream's own codes (23) propagate.
/// @relatesalso CZRB_Time
LZRB_API CZRB_Buffer& operator<<(CZRB_Buffer& buffer, CZRB_Time& time);
/// Reads a record written by operator<< into the time, unchecked; returns the stream. A short
/// stream throws the stream's code 3 (24 when not readable) and leaves the time unchanged.
/// @relatesalso CZRB_Time
LZRB_API CZRB_Buffer& operator>>(CZRB_Buffer& buffer, CZRB_Time& time);

/// A time of day in milliseconds since midnight, without date or time zone.
///
/// A valid time holds 0 .. 86399999; the null time holds -1. No operation throws.
class LZRB_API CZRB_Time : public CZRB_Object {
public:
    /// The parts of a time of day.
    struct t_Date_Struct {
        unsigned char hour;         ///< 0..23
        unsigned char minute;       ///< 0..59
        unsigned char second;       ///< 0..59
        unsigned short millisecond; ///< 0..999
    };

    /// The null time (-1).
    CZRB_Time();
    /// Set(hour, minute, second, millisecond): the null time when a part is out of range.
    CZRB_Time(int hour, int minute, int second, int millisecond);
    /// Copies the millisecond count.
    CZRB_Time(const CZRB_Time& other);
    /// Copies the millisecond count; returns this time.
    CZRB_Time& operator=(const CZRB_Time& other);
    /// Does nothing beyond the base.
    ~CZRB_Time() override;

    /// 1 and the count set when hour < 24, minute < 60, second < 60 and millisecond < 1000,
    /// each read as unsigned (so negative parts fail); otherwise 0 and the time becomes null.
    unsigned int Set(int hour, int minute, int second, int millisecond);
    /// Set() with the four fields of the structure.
    unsigned int Set(t_Date_Struct& time);

    /// 1 when the count, read as unsigned, is below 86400000.
    unsigned char IsValid() const;
    /// The exact negation of IsValid().
    unsigned char IsNull() const;

    /// Hour 0..23; -1 for a null time.
    int GetHour() const;
    /// Minute 0..59; -1 for a null time.
    int GetMinute() const;
    /// Second 0..59; -1 for a null time.
    int GetSecond() const;
    /// Millisecond 0..999; -1 for a null time.
    int GetMillisecond() const;
    /// Fills the four parts and returns 0; for a null time returns 32 and leaves the structure
    /// as it is. (0 means success here, unlike Set.)
    unsigned int GetTimeStruct(t_Date_Struct& time) const;

    /// This time plus n milliseconds, wrapping at midnight both ways; null for a null time.
    /// Kept as shipped: the sums are 32-bit and wrap, so amounts within about 86400000 of the
    /// 32-bit limits give a shifted or even a null result.
    CZRB_Time AddMilliseconds(int n) const;
    /// This time plus n seconds: whole days are dropped first (truncating), then the rest is
    /// added as milliseconds; null for a null time.
    CZRB_Time AddSeconds(int n) const;
    /// Other's count minus this count; 0 when either time is null.
    int MillisecondsTo(CZRB_Time other) const;
    /// MillisecondsTo(other) / 1000, truncated towards zero; 0 when either time is null.
    int SecondsTo(CZRB_Time other) const;

    /// Sets this time to GetCurrentTime() and returns it.
    CZRB_Time& FromCurrentTime();
    /// The local wall-clock time with milliseconds; null when the clock cannot be read (or
    /// reports a leap second).
    static CZRB_Time GetCurrentTime();

    /// @name Comparisons by the signed count (null, being -1, is the smallest)
    /// @{

    /// 1 when both hold the same count, else 0.
    unsigned char operator==(const CZRB_Time& other) const;
    /// 1 when the counts differ, else 0.
    unsigned char operator!=(const CZRB_Time& other) const;
    /// 1 when this orders before other, else 0.
    unsigned char operator<(const CZRB_Time& other) const;
    /// 1 when this orders before other or with it, else 0.
    unsigned char operator<=(const CZRB_Time& other) const;
    /// 1 when this orders after other, else 0.
    unsigned char operator>(const CZRB_Time& other) const;
    /// 1 when this orders after other or with it, else 0.
    unsigned char operator>=(const CZRB_Time& other) const;
    /// -1, 0 or +1 as a orders before, with or after b by count.
    static signed char SortCompare(const CZRB_Time& a, const CZRB_Time& b);
    /// @}

    /// The format copied character by character with directives of GetTimeStruct's parts:
    /// `%h`/`%H` hour, `%t`/`%T` minute, `%s`/`%S` second (upper case pads to two digits),
    /// `%x`/`%X` millisecond (upper case pads to three), `%%` a percent sign. Another directive
    /// is copied with its "%"; a "%" at the end produces nothing. A null time prints its parts
    /// as 0.
    CZRB_String ToString(const CZRB_String& format) const;

protected:
    /// Copies the count of other.
    void DataCopy(const CZRB_Time& other);
    /// The range test of Set: each part read as unsigned against 24, 60, 60 and 1000.
    static bool IsValid(int hour, int minute, int second, int millisecond);

private:
    friend CZRB_Buffer& operator<<(CZRB_Buffer& buffer, CZRB_Time& time);
    friend CZRB_Buffer& operator>>(CZRB_Buffer& buffer, CZRB_Time& time);

    int m_milliseconds;
};

extern template class LZRB_API CZRB_Vector<CZRB_Time>;
extern template class LZRB_API CZRB_List<CZRB_Time>;

/// A vector of times (default elements: null times) sorted by CZRB_Time::SortCompare (non-zero
/// ascending: the earliest first).
class LZRB_API CZRB_TimeVector : public CZRB_Vector<CZRB_Time> {
    LZRB_NAMED_VECTOR_MEMBERS(CZRB_TimeVector, CZRB_Vector<CZRB_Time>, CZRB_Time)
    LZRB_NAMED_SORT(CZRB_TimeVector, CZRB_Vector<CZRB_Time>, CZRB_Time::SortCompare)
};

/// A list of times sorted by CZRB_Time::SortCompare (non-zero ascending: the earliest first).
class LZRB_API CZRB_TimeList : public CZRB_List<CZRB_Time> {
    LZRB_NAMED_LIST_MEMBERS(CZRB_TimeList, CZRB_List<CZRB_Time>, CZRB_Time)
    LZRB_NAMED_SORT(CZRB_TimeList, CZRB_List<CZRB_Time>, CZRB_Time::SortCompare)
};

#endif
