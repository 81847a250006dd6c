// Decimal numbers from outside text: parsing gives the value of the documented rule (trimmed,
// the separator of the point type, padded decimal digits kept to 16 bits and rounded half up,
// the runtime's conversions), both text forms read back to the same value where they can
// carry it, comparison is antisymmetric whatever the digit counts, and the arithmetic is exact
// modulo 2^64. Doubles of any bit pattern convert without undefined behaviour.
#include "CZRB_DecimalNumber.h"
#include "FuzzSupport.h"

namespace {

using Decimal = CZRB_DecimalNumber;

unsigned long long PowerOfTen(unsigned int n) {
    unsigned long long power = 1;
    for (unsigned int i = 0; i < n && i < 64; ++i) {
        power *= 10;
    }
    return power;
}

// The decimal part d for n digits: unchanged below 10^n, else its leading digits below 10^n
// plus one when the first dropped digit is 5 or more; kept to 16 bits.
unsigned short Rounded(unsigned int n, unsigned long long d) {
    const unsigned long long limit = PowerOfTen(n);
    if (d < limit) {
        return static_cast<unsigned short>(d);
    }
    unsigned long long divisor = 10;
    while (d / divisor >= limit && d / divisor != 0) {
        divisor *= 10;
    }
    const unsigned long long quotient = d / divisor;
    return static_cast<unsigned short>(quotient + (d % divisor >= divisor / 2 ? 1 : 0));
}

// The scaled value Set(text, type) must give with n digits.
long long ModelParse(const std::string& text, unsigned int n, int type) {
    std::string trimmed(text.c_str());
    trimmed.erase(0, trimmed.find_first_not_of(' '));
    trimmed.erase(trimmed.find_last_not_of(' ') + 1);
    std::size_t point = std::string::npos;
    if (type == Decimal::DECIMAL_POINT_DOT || type == Decimal::DECIMAL_POINT_ANY) {
        point = trimmed.find('.');
    }
    if (point == std::string::npos &&
        (type == Decimal::DECIMAL_POINT_COMMA || type == Decimal::DECIMAL_POINT_ANY)) {
        point = trimmed.find(',');
    }
    const unsigned long long scale = PowerOfTen(n);
    if (point == std::string::npos) {
        return static_cast<long long>(
            static_cast<unsigned long long>(std::strtoll(trimmed.c_str(), nullptr, 10)) * scale);
    }
    std::string decimals = trimmed.substr(point + 1);
    if (decimals.size() < n) {
        decimals.append(n - decimals.size(), '0');
    }
    const auto decimal = static_cast<unsigned short>(std::strtoull(decimals.c_str(), nullptr, 10));
    const bool negative = trimmed[0] == '-';
    const std::string integral = trimmed.substr(negative ? 1 : 0, point - (negative ? 1 : 0));
    const unsigned long long magnitude =
        std::strtoull(integral.c_str(), nullptr, 10) * scale + Rounded(n, decimal);
    return static_cast<long long>(negative ? 0 - magnitude : magnitude);
}

// ToString('.') and ToString('.', group) read back, where their text can carry the value.
void CheckTextRoundTrips(const Decimal& number, char group) {
    const unsigned int n = number.GetNumDigits();
    if (n > 4) {
        return; // the decimal part no longer fits its 16 bits
    }
    const auto type = Decimal::DECIMAL_POINT_DOT;
    if (number.GetIntegral() < 0x80000000ULL) { // "%d" prints the low 32 bits only
        const Decimal back(n, number.ToString('.').GetStringC(), type);
        FUZZ_CHECK(back.GetScaledValue() == number.GetScaledValue());
    }
    if (group == '.' || group == '-' || group == ' ' || group == '\0' || group == '+' ||
        (group >= '0' && group <= '9') || (n == 0 && number.GetIntegral() >> 63 != 0)) {
        return; // a group character the reading would take for something else, or too large
    }
    std::string text = FromLib(number.ToString('.', group));
    for (std::size_t at = text.find(group); at != std::string::npos; at = text.find(group, at)) {
        text.erase(at, 1);
    }
    FUZZ_CHECK(Decimal(n, text.c_str(), type).GetScaledValue() == number.GetScaledValue());
}

void CheckArithmetic(const Decimal& a, const Decimal& b, long long factor, unsigned int newDigits) {
    FUZZ_CHECK(a.Compare(b) == -b.Compare(a) && Decimal::Compare(a, a) == 0);
    FUZZ_CHECK((a < b) == (b > a) && (a == b) == (b == a));
    const auto wrapped = [](long long value, unsigned long long factor) {
        return static_cast<long long>(static_cast<unsigned long long>(value) * factor);
    };
    FUZZ_CHECK((a * factor).GetScaledValue() == wrapped(a.GetScaledValue(), factor));
    if (a.GetNumDigits() == b.GetNumDigits()) {
        FUZZ_CHECK(((a + b) - b).GetScaledValue() == a.GetScaledValue());
        FUZZ_CHECK(((a - b) + b).GetScaledValue() == a.GetScaledValue());
    }
    Decimal sum(a);
    sum += b;
    FUZZ_CHECK(sum.GetNumDigits() == a.GetNumDigits());
    Decimal rescaled(a);
    rescaled.ChangeNumDigits(static_cast<unsigned short>(newDigits));
    const unsigned int n = a.GetNumDigits();
    if (n <= newDigits && newDigits <= 4) { // growing within 16 bits scales exactly
        FUZZ_CHECK(rescaled.GetScaledValue() ==
                   wrapped(a.GetScaledValue(), PowerOfTen(newDigits - n)));
    }
    (void)rescaled.ToDouble();
    (void)rescaled.ToString(',');
}

unsigned int TakeDigits(FuzzInput& input) {
    const unsigned int raw = input.Take<std::uint8_t>();
    return raw < 240 ? raw % 7 : (raw - 240) * 5; // mostly 0..6, now and then up to 75
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    const unsigned int n = TakeDigits(input), m = TakeDigits(input);
    const int type = static_cast<int>(input.TakeInRange(0, 3)); // 3 is no known type
    const char group = input.Take<char>();
    const long long factor = input.Take<long long>();
    const unsigned int newDigits = TakeDigits(input);
    const double anyDouble = input.Take<double>();
    const std::string second = input.TakeShortBytes(24);
    const std::string text = input.TakeRest();

    const auto pointType = static_cast<Decimal::t_DecimalPointType>(type);
    const Decimal a(static_cast<unsigned short>(n), text.c_str(), pointType);
    FUZZ_CHECK(a.GetScaledValue() == ModelParse(text, n, type));
    const Decimal b(static_cast<unsigned short>(m), second.c_str(), pointType);
    CheckTextRoundTrips(a, group);
    CheckArithmetic(a, b, factor, newDigits);

    const Decimal fromDouble(static_cast<unsigned short>(n), anyDouble);
    CheckTextRoundTrips(fromDouble, group);
    CheckArithmetic(fromDouble, a, factor, newDigits);
    return 0;
}
