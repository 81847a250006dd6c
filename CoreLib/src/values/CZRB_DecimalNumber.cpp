#include "CZRB_DecimalNumber.h"

#include <cmath>
#include <limits>

template class CZRB_Vector<CZRB_DecimalNumber>;
template class CZRB_List<CZRB_DecimalNumber>;

namespace {

// Two's-complement wrap-around helpers: the arithmetic runs on unsigned 64-bit values.
__int64 FromBits(unsigned __int64 bits) {
    return static_cast<__int64>(bits);
}
unsigned __int64 ToBits(__int64 value) {
    return static_cast<unsigned __int64>(value);
}

// 2^64 as a double, the modulus of the double-to-integer wrap-around.
const double kTwoPow64 = 18446744073709551616.0;

// Truncates a non-negative double to 64 bits, wrapping modulo 2^64; NaN and infinity give 0.
unsigned __int64 TruncateToUint64(double value) {
    if (!std::isfinite(value) || value < 0.0) {
        return 0;
    }
    if (value >= kTwoPow64) {
        value = std::fmod(value, kTwoPow64);
    }
    return static_cast<unsigned __int64>(value);
}

} // namespace

CZRB_DecimalNumber::CZRB_DecimalNumber() : m_NumDigits(0), m_Value(0) {}

CZRB_DecimalNumber::CZRB_DecimalNumber(unsigned short numDigits)
    : m_NumDigits(numDigits), m_Value(0) {}

CZRB_DecimalNumber::CZRB_DecimalNumber(unsigned short numDigits, const __int64& integer)
    : m_NumDigits(numDigits), m_Value(0) {
    Set(integer);
}

CZRB_DecimalNumber::CZRB_DecimalNumber(unsigned short numDigits, const __int64& integral,
                                       const unsigned short& decimal)
    : m_NumDigits(numDigits), m_Value(0) {
    Set(ToBits(integral), decimal, 0);
}

CZRB_DecimalNumber::CZRB_DecimalNumber(unsigned short numDigits, const double& value)
    : m_NumDigits(numDigits), m_Value(0) {
    Set(value);
}

CZRB_DecimalNumber::CZRB_DecimalNumber(unsigned short numDigits, const char* text,
                                       t_DecimalPointType pointType)
    : m_NumDigits(numDigits), m_Value(0) {
    Set(text, pointType);
}

CZRB_DecimalNumber::CZRB_DecimalNumber(const CZRB_DecimalNumber& other)
    : CZRB_Object(other), m_NumDigits(0), m_Value(0) {
    DataCopy(other);
}

CZRB_DecimalNumber& CZRB_DecimalNumber::operator=(const CZRB_DecimalNumber& other) {
    DataCopy(other);
    return *this;
}

CZRB_DecimalNumber& CZRB_DecimalNumber::operator=(const double& value) {
    return Set(value);
}

CZRB_DecimalNumber::~CZRB_DecimalNumber() = default;

void CZRB_DecimalNumber::DataCopy(const CZRB_DecimalNumber& other) {
    m_NumDigits = other.m_NumDigits;
    m_Value = other.m_Value;
}

// --- Scaling helpers ---

unsigned __int64 CZRB_DecimalNumber::GetMaxDec(unsigned short numDigits) {
    // 10^64 is a multiple of 2^64, so every further factor leaves 0.
    const unsigned short steps = numDigits < 64 ? numDigits : 64;
    unsigned __int64 power = 1;
    for (unsigned short i = 0; i < steps; ++i) {
        power *= 10;
    }
    return power;
}

unsigned short CZRB_DecimalNumber::RoundDecimal(unsigned short numDigits,
                                                unsigned __int64 decimal) {
    const unsigned __int64 limit = GetMaxDec(numDigits);
    if (decimal < limit) {
        return static_cast<unsigned short>(decimal);
    }
    // Dividing by 10, 100, ... until the quotient is below 10^n and testing the remainder
    // against half the divisor is the same as testing the first dropped digit against 5.
    // The quotient reaching 0 also ends the loop (a limit that wrapped to 0 would not).
    unsigned __int64 quotient = decimal;
    unsigned __int64 droppedDigit = 0;
    while (quotient >= limit && quotient != 0) {
        droppedDigit = quotient % 10;
        quotient /= 10;
    }
    if (droppedDigit >= 5) {
        ++quotient;
    }
    return static_cast<unsigned short>(quotient);
}

unsigned __int64 CZRB_DecimalNumber::Magnitude() const {
    return m_Value < 0 ? 0 - ToBits(m_Value) : ToBits(m_Value);
}

// --- Setting ---

CZRB_DecimalNumber& CZRB_DecimalNumber::Set(const unsigned __int64& integral,
                                            const unsigned short& decimal, unsigned char negative) {
    const unsigned __int64 scaled =
        integral * GetMaxDec(m_NumDigits) + RoundDecimal(m_NumDigits, decimal);
    m_Value = FromBits(negative != 0 ? 0 - scaled : scaled);
    return *this;
}

CZRB_DecimalNumber& CZRB_DecimalNumber::Set(const __int64& integer) {
    return Set(ToBits(integer), 0, 0);
}

CZRB_DecimalNumber& CZRB_DecimalNumber::Set(const double& value) {
    double integralPart = 0.0;
    double fraction = std::modf(std::fabs(value), &integralPart);
    for (unsigned short i = 0; i < m_NumDigits; ++i) {
        fraction *= 10.0;
    }
    const unsigned short decimal = RoundDecimal(m_NumDigits, TruncateToUint64(fraction + 0.5));
    return Set(TruncateToUint64(integralPart), decimal, value < 0.0 ? 1 : 0);
}

CZRB_DecimalNumber& CZRB_DecimalNumber::Set(const char* text, t_DecimalPointType pointType) {
    CZRB_String trimmed(text != nullptr ? text : "");
    trimmed.Trim(' ', 3);

    unsigned int point = 0;
    bool found = false;
    if (pointType == DECIMAL_POINT_DOT || pointType == DECIMAL_POINT_ANY) {
        found = trimmed.FindFromBegin('.', &point, 0) != 0;
    }
    if (!found && (pointType == DECIMAL_POINT_COMMA || pointType == DECIMAL_POINT_ANY)) {
        found = trimmed.FindFromBegin(',', &point, 0) != 0;
    }
    if (!found) {
        return Set(ToBits(trimmed.ToSigned()), 0, 0);
    }

    CZRB_String decimalText = trimmed.RightFromPos(point + 1);
    while (decimalText.GetLength() < m_NumDigits) {
        decimalText += '0';
    }
    const unsigned short decimal = static_cast<unsigned short>(decimalText.ToUnsigned(10));

    CZRB_String integralText = trimmed.Left(point);
    unsigned char negative = 0;
    if (trimmed.GetChar(0) == '-') {
        integralText = integralText.RightFromPos(1);
        negative = 1;
    }
    return Set(integralText.ToUnsigned(10), decimal, negative);
}

// --- Parts ---

signed char CZRB_DecimalNumber::GetSign() const {
    return m_Value < 0 ? -1 : 1;
}

unsigned __int64 CZRB_DecimalNumber::GetIntegral() const {
    const unsigned __int64 divisor = GetMaxDec(m_NumDigits);
    return divisor != 0 ? Magnitude() / divisor : 0;
}

unsigned short CZRB_DecimalNumber::GetDecimal() const {
    const unsigned __int64 divisor = GetMaxDec(m_NumDigits);
    return static_cast<unsigned short>(divisor != 0 ? Magnitude() % divisor : Magnitude());
}

CZRB_DecimalNumber& CZRB_DecimalNumber::ChangeNumDigits(unsigned short numDigits) {
    if (numDigits == m_NumDigits) {
        return *this;
    }
    const unsigned __int64 integral = GetIntegral();
    unsigned short decimal = GetDecimal();
    const unsigned char negative = m_Value < 0 ? 1 : 0;
    if (numDigits < m_NumDigits) {
        unsigned short droppedDigit = 0;
        for (unsigned int i = numDigits; i < m_NumDigits; ++i) {
            droppedDigit = static_cast<unsigned short>(decimal % 10);
            decimal = static_cast<unsigned short>(decimal / 10);
        }
        if (droppedDigit >= 5) {
            ++decimal;
        }
    } else {
        for (unsigned int i = m_NumDigits; i < numDigits; ++i) {
            decimal = static_cast<unsigned short>(decimal * 10U);
        }
    }
    m_NumDigits = numDigits;
    // Set passes the decimal part through RoundDecimal: a carry to 10^m becomes 1.
    return Set(integral, decimal, negative);
}

// --- Arithmetic ---

CZRB_DecimalNumber CZRB_DecimalNumber::Sum(const CZRB_DecimalNumber& a,
                                           const CZRB_DecimalNumber& b) {
    CZRB_DecimalNumber result(a.m_NumDigits);
    result.m_Value = FromBits(ToBits(a.m_Value) + ToBits(b.m_Value));
    return result;
}

CZRB_DecimalNumber CZRB_DecimalNumber::Sub(const CZRB_DecimalNumber& a,
                                           const CZRB_DecimalNumber& b) {
    CZRB_DecimalNumber result(a.m_NumDigits);
    result.m_Value = FromBits(ToBits(a.m_Value) - ToBits(b.m_Value));
    return result;
}

CZRB_DecimalNumber CZRB_DecimalNumber::operator+(const CZRB_DecimalNumber& other) const {
    if (other.m_NumDigits == m_NumDigits) {
        return Sum(*this, other);
    }
    CZRB_DecimalNumber aligned(other);
    aligned.ChangeNumDigits(m_NumDigits);
    return Sum(*this, aligned);
}

CZRB_DecimalNumber CZRB_DecimalNumber::operator-(const CZRB_DecimalNumber& other) const {
    if (other.m_NumDigits == m_NumDigits) {
        return Sub(*this, other);
    }
    CZRB_DecimalNumber aligned(other);
    aligned.ChangeNumDigits(m_NumDigits);
    return Sub(*this, aligned);
}

CZRB_DecimalNumber& CZRB_DecimalNumber::operator+=(const CZRB_DecimalNumber& other) {
    return *this = *this + other;
}

CZRB_DecimalNumber& CZRB_DecimalNumber::operator-=(const CZRB_DecimalNumber& other) {
    return *this = *this - other;
}

CZRB_DecimalNumber CZRB_DecimalNumber::operator*(const __int64& factor) const {
    CZRB_DecimalNumber result(m_NumDigits);
    result.m_Value = FromBits(ToBits(m_Value) * ToBits(factor));
    return result;
}

CZRB_DecimalNumber operator*(const __int64& factor, const CZRB_DecimalNumber& number) {
    return number * factor;
}

// --- Comparison ---

signed char CZRB_DecimalNumber::Compare(const CZRB_DecimalNumber& other) const {
    if (m_NumDigits < other.m_NumDigits) {
        // Re-scaling is done on the side with fewer digits, so ask the other side.
        return static_cast<signed char>(-other.Compare(*this));
    }
    __int64 otherValue = other.m_Value;
    if (m_NumDigits > other.m_NumDigits) {
        CZRB_DecimalNumber aligned(other);
        aligned.ChangeNumDigits(m_NumDigits);
        otherValue = aligned.m_Value;
    }
    if (m_Value < otherValue) {
        return -1;
    }
    return m_Value > otherValue ? 1 : 0;
}

signed char CZRB_DecimalNumber::Compare(const CZRB_DecimalNumber& a, const CZRB_DecimalNumber& b) {
    return a.Compare(b);
}

unsigned char CZRB_DecimalNumber::operator==(const CZRB_DecimalNumber& other) const {
    return Compare(other) == 0 ? 1 : 0;
}

unsigned char CZRB_DecimalNumber::operator!=(const CZRB_DecimalNumber& other) const {
    return Compare(other) != 0 ? 1 : 0;
}

unsigned char CZRB_DecimalNumber::operator<(const CZRB_DecimalNumber& other) const {
    return Compare(other) < 0 ? 1 : 0;
}

unsigned char CZRB_DecimalNumber::operator<=(const CZRB_DecimalNumber& other) const {
    return Compare(other) <= 0 ? 1 : 0;
}

unsigned char CZRB_DecimalNumber::operator>(const CZRB_DecimalNumber& other) const {
    return Compare(other) > 0 ? 1 : 0;
}

unsigned char CZRB_DecimalNumber::operator>=(const CZRB_DecimalNumber& other) const {
    return Compare(other) >= 0 ? 1 : 0;
}

// --- Output ---

double CZRB_DecimalNumber::ToDouble() const {
    const double integral = static_cast<double>(GetIntegral());
    const double decimal = static_cast<double>(GetDecimal());
    unsigned __int64 power = 1;
    for (unsigned short i = 0; i < m_NumDigits && power != 0; ++i) {
        power *= 10;
    }
    double result = 0.0;
    if (power != 0) {
        result = decimal / static_cast<double>(power) + integral;
    } else {
        // A power that wrapped to 0 divides by zero: infinity, or NaN for 0 / 0.
        result = decimal != 0.0 ? std::numeric_limits<double>::infinity()
                                : std::numeric_limits<double>::quiet_NaN();
    }
    return m_Value < 0 ? -result : result;
}

CZRB_String CZRB_DecimalNumber::ToString(char point) const {
    CZRB_String decimalFormat;
    decimalFormat.Format("%%0%dd", static_cast<int>(m_NumDigits));
    CZRB_String decimalText;
    decimalText.Format(decimalFormat.GetStringC(), static_cast<int>(GetDecimal()));
    // Only the low 32 bits of the integral part reach "%d", read as a signed number.
    const int low32 = static_cast<int>(static_cast<unsigned int>(GetIntegral() & 0xFFFFFFFFULL));
    CZRB_String text;
    text.Format("%d", low32);
    text += point;
    if (decimalText.GetLength() != 0) {
        text += decimalText;
    }
    if (m_Value < 0) {
        text = "-" + text;
    }
    return text;
}

CZRB_String CZRB_DecimalNumber::ToString(char point, char group) const {
    const unsigned __int64 divisor = GetMaxDec(m_NumDigits);
    const unsigned __int64 magnitude = Magnitude();
    const unsigned __int64 integral = divisor != 0 ? magnitude / divisor : 0;
    const unsigned __int64 decimal = divisor != 0 ? magnitude % divisor : magnitude;

    CZRB_String text = CZRB_String::FromNumber(integral, 10, 3, group);
    if (m_NumDigits != 0) {
        CZRB_String decimalFormat;
        decimalFormat.Format("%%0%dllu", static_cast<int>(m_NumDigits));
        CZRB_String decimalText;
        decimalText.Format(decimalFormat.GetStringC(), decimal);
        text += point;
        text += decimalText;
    }
    if (m_Value < 0) {
        text = "-" + text;
    }
    return text;
}

// --- Named containers ---

CZRB_DecimalNumberVector::~CZRB_DecimalNumberVector() = default;
CZRB_DecimalNumberList::~CZRB_DecimalNumberList() = default;
