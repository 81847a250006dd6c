/// @file
/// CZRB_DecimalNumber: a signed fixed-point number with its own count of decimal digits, held
/// as one scaled 64-bit integer (12.34 with 2 digits is stored as 1234).
#ifndef CZRB_DECIMALNUMBER_H
#define CZRB_DECIMALNUMBER_H

#include "CZRB_List.h"
#include "CZRB_Object.h"
#include "CZRB_String.h"
#include "CZRB_Vector.h"
#include "LZRB_NamedContainer.h"

/// A signed fixed-point number with its own count of decimal digits, held as one scaled
/// 64-bit integer (12.34 with 2 digits is stored as 1234).
///
/// The decimal part travels through 16-bit quantities (GetDecimal, the decimal argument of
/// Set), so digit counts above 4 overflow them; this is by design and not guarded. Nothing
/// throws: overflow of the scaled value or of the 16-bit quantities wraps silently.
class LZRB_API CZRB_DecimalNumber : public CZRB_Object {
public:
    /// Decimal separator accepted by text input; DECIMAL_POINT_ANY looks for "." first.
    enum t_DecimalPointType : int {
        DECIMAL_POINT_DOT = 0,   ///< "."
        DECIMAL_POINT_COMMA = 1, ///< ","
        DECIMAL_POINT_ANY = 2    ///< "." or ","
    };

    /// Zero with 0 decimal digits (the element state of containers).
    CZRB_DecimalNumber();
    /// Zero with `numDigits` decimal digits.
    CZRB_DecimalNumber(unsigned short numDigits);
    /// `integer` with no decimals, as Set(const __int64&).
    CZRB_DecimalNumber(unsigned short numDigits, const __int64& integer);
    /// integral * 10^n + RoundDecimal(n, decimal): the 64-bit pattern of `integral` is used as
    /// it is and never negated, so (-2, 5) with one digit is -1.5.
    CZRB_DecimalNumber(unsigned short numDigits, const __int64& integral,
                       const unsigned short& decimal);
    /// As Set(const double&).
    CZRB_DecimalNumber(unsigned short numDigits, const double& value);
    /// As Set(const char*, t_DecimalPointType).
    CZRB_DecimalNumber(unsigned short numDigits, const char* text, t_DecimalPointType pointType);
    /// Copies the digit count and the scaled value.
    CZRB_DecimalNumber(const CZRB_DecimalNumber& other);
    /// Copies the digit count and the scaled value; returns *this.
    CZRB_DecimalNumber& operator=(const CZRB_DecimalNumber& other);
    /// As Set(const double&); the digit count is kept.
    CZRB_DecimalNumber& operator=(const double& value);
    /// Does nothing beyond the base.
    ~CZRB_DecimalNumber() override;

    /// value = integral * 10^n + RoundDecimal(n, decimal), negated when `negative` is non-zero;
    /// wraps in 64 bits. Returns *this.
    CZRB_DecimalNumber& Set(const unsigned __int64& integral, const unsigned short& decimal,
                            unsigned char negative);
    /// Set(integer, 0, 0): the two's-complement pattern goes in as the integral, so a negative
    /// integer yields its negative value through the wrap-around.
    CZRB_DecimalNumber& Set(const __int64& integer);
    /// Integral part of |value| (wrapping modulo 2^64 beyond 64 bits; NaN gives 0) and
    /// fraction * 10^n + 0.5 truncated, then RoundDecimal; negative when value < 0.
    CZRB_DecimalNumber& Set(const double& value);
    /// Parses trimmed text with the separator(s) of `pointType`. Decimal digits are padded with
    /// "0" to n, kept to 16 bits and rounded by RoundDecimal; a leading "-" before the separator
    /// makes the number negative (so -0.5 keeps its sign). Text without a separator is read as
    /// a signed 64-bit integer. Conversions stop silently at the first non-digit.
    CZRB_DecimalNumber& Set(const char* text, t_DecimalPointType pointType);

    /// -1 when the value is negative, otherwise +1 (also for zero).
    signed char GetSign() const;
    /// |value| / 10^n.
    unsigned __int64 GetIntegral() const;
    /// |value| mod 10^n kept to 16 bits (wrong for digit counts above 4, by design).
    unsigned short GetDecimal() const;
    /// Number of decimal digits n.
    unsigned short GetNumDigits() const { return m_NumDigits; }
    /// The scaled value (the number times 10^n).
    __int64 GetScaledValue() const { return m_Value; }

    /// Re-scales to `numDigits` digits, rounding half up on the first dropped digit; returns
    /// *this. Kept as shipped: a rounding carry is not moved into the integral part (2.96 to
    /// one digit is 2.1), and growing keeps every x10 step of the decimal part to 16 bits
    /// (0.99 from 2 to 5 digits is 0.33464).
    CZRB_DecimalNumber& ChangeNumDigits(unsigned short numDigits);

    /// Sum with this number's digit count; `other` is first re-scaled with ChangeNumDigits.
    CZRB_DecimalNumber operator+(const CZRB_DecimalNumber& other) const;
    /// Difference with this number's digit count; `other` is first re-scaled with
    /// ChangeNumDigits.
    CZRB_DecimalNumber operator-(const CZRB_DecimalNumber& other) const;
    /// *this = *this + other; returns *this.
    CZRB_DecimalNumber& operator+=(const CZRB_DecimalNumber& other);
    /// *this = *this - other; returns *this.
    CZRB_DecimalNumber& operator-=(const CZRB_DecimalNumber& other);
    /// Scaled value times `factor` (wrapping in 64 bits); the digit count is kept.
    CZRB_DecimalNumber operator*(const __int64& factor) const;

    /// -1, 0 or +1. A number with fewer digits than `other` answers the negation of
    /// other.Compare(*this), so both sides agree.
    signed char Compare(const CZRB_DecimalNumber& other) const;
    /// a.Compare(b); the comparison used by the named containers' Sort.
    static signed char Compare(const CZRB_DecimalNumber& a, const CZRB_DecimalNumber& b);
    /// 1 when Compare gives 0, else 0.
    unsigned char operator==(const CZRB_DecimalNumber& other) const;
    /// 1 when Compare gives non-zero, else 0.
    unsigned char operator!=(const CZRB_DecimalNumber& other) const;
    /// 1 when Compare gives -1, else 0.
    unsigned char operator<(const CZRB_DecimalNumber& other) const;
    /// 1 when Compare gives -1 or 0, else 0.
    unsigned char operator<=(const CZRB_DecimalNumber& other) const;
    /// 1 when Compare gives +1, else 0.
    unsigned char operator>(const CZRB_DecimalNumber& other) const;
    /// 1 when Compare gives +1 or 0, else 0.
    unsigned char operator>=(const CZRB_DecimalNumber& other) const;

    /// GetDecimal() / 10^n + GetIntegral(), negated for a negative value. Kept as shipped: the
    /// fraction passes through 16 bits, so digit counts above 4 lose its high part.
    double ToDouble() const;
    /// Integral part, `point`, decimal part zero-padded to n digits ("-" in front when
    /// negative). Kept as shipped: the integral part prints as the signed value of its low 32
    /// bits, and n = 0 prints a trailing "0" (5 prints as "5.0").
    CZRB_String ToString(char point) const;
    /// Integral part grouped by three digits with `group`, then `point` and the decimal part
    /// zero-padded to n digits ("-" in front when negative). With n = 0 only the grouped
    /// integral part is written, without the point.
    CZRB_String ToString(char point, char group) const;

protected:
    /// Copies the digit count and the scaled value.
    void DataCopy(const CZRB_DecimalNumber& other);
    /// a's digit count, a.value + b.value without aligning digit counts (wraps).
    static CZRB_DecimalNumber Sum(const CZRB_DecimalNumber& a, const CZRB_DecimalNumber& b);
    /// a's digit count, a.value - b.value without aligning digit counts (wraps).
    static CZRB_DecimalNumber Sub(const CZRB_DecimalNumber& a, const CZRB_DecimalNumber& b);
    /// 10^n computed in 64 bits (1 for n = 0; wraps for n above 19, 0 from n = 64 on).
    static unsigned __int64 GetMaxDec(unsigned short numDigits);
    /// `decimal` unchanged below 10^n; otherwise its leading digits below 10^n, plus 1 when the
    /// first dropped digit is 5 or more (half up); kept to 16 bits.
    static unsigned short RoundDecimal(unsigned short numDigits, unsigned __int64 decimal);

private:
    /// |value| as an unsigned number (the smallest integer stays 2^63).
    unsigned __int64 Magnitude() const;

    unsigned short m_NumDigits;
    __int64 m_Value;
};

/// Scaled value of `number` times `factor` (wrapping in 64 bits); the digit count is kept.
/// @relatesalso CZRB_DecimalNumber
LZRB_API CZRB_DecimalNumber operator*(const __int64& factor, const CZRB_DecimalNumber& number);

extern template class LZRB_API CZRB_Vector<CZRB_DecimalNumber>;
extern template class LZRB_API CZRB_List<CZRB_DecimalNumber>;

/// Named vector of decimal numbers (default elements: zero), sorted by CZRB_DecimalNumber::Compare.
class LZRB_API CZRB_DecimalNumberVector : public CZRB_Vector<CZRB_DecimalNumber> {
    LZRB_NAMED_VECTOR_MEMBERS(CZRB_DecimalNumberVector, CZRB_Vector<CZRB_DecimalNumber>,
                              CZRB_DecimalNumber)
    LZRB_NAMED_SORT(CZRB_DecimalNumberVector, CZRB_Vector<CZRB_DecimalNumber>,
                    &CZRB_DecimalNumber::Compare)

public:
    /// Copies every element of the base vector.
    CZRB_DecimalNumberVector(const CZRB_Vector<CZRB_DecimalNumber>& other)
        : CZRB_Vector<CZRB_DecimalNumber>(other) {}
};

/// Named list of decimal numbers, sorted by CZRB_DecimalNumber::Compare.
class LZRB_API CZRB_DecimalNumberList : public CZRB_List<CZRB_DecimalNumber> {
    LZRB_NAMED_LIST_MEMBERS(CZRB_DecimalNumberList, CZRB_List<CZRB_DecimalNumber>,
                            CZRB_DecimalNumber)
    LZRB_NAMED_SORT(CZRB_DecimalNumberList, CZRB_List<CZRB_DecimalNumber>,
                    &CZRB_DecimalNumber::Compare)

public:
    /// Copies every item of the base list.
    CZRB_DecimalNumberList(const CZRB_List<CZRB_DecimalNumber>& other)
        : CZRB_List<CZRB_DecimalNumber>(other) {}
};

#endif
