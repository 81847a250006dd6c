// Numbers in strings from outside: every conversion of arbitrary text terminates without
// reading outside the string, and the numbers it gives survive a round trip through the
// library's own number-to-text forms (radix digits and grouping, the radix markers, "%.17g").
#include "CZRB_String.h"
#include "FuzzSupport.h"

#include <cmath>

namespace {

// `digits` with `separator` after every `group` digits counted from the right.
std::string Grouped(const std::string& digits, unsigned int group, char separator) {
    std::string text;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (group != 0 && i != 0 && (digits.size() - i) % group == 0) {
            text += separator;
        }
        text += digits[i];
    }
    return text;
}

void CheckRadixText(unsigned long long value, unsigned int radix, unsigned int group,
                    char separator) {
    const std::string digits = FromLib(CZRB_String::FromNumber(value, radix, 0, separator));
    const std::string grouped = FromLib(CZRB_String::FromNumber(value, radix, group, separator));
    FUZZ_CHECK(FromLib(CZRB_String().SetFromNumber(value, radix, group, separator)) == grouped);
    if (radix < 2) {
        FUZZ_CHECK(digits.empty() && grouped.empty());
        return;
    }
    FUZZ_CHECK(!digits.empty() && digits.size() <= 64);
    FUZZ_CHECK(grouped == Grouped(digits, group, separator));
    if (radix <= 36) {
        FUZZ_CHECK((digits[0] != '0' || value == 0) && ToLib(digits).ToUnsigned(radix) == value);
    }
}

// The radix markers read back what the library writes in that radix.
void CheckMarkedRadix(unsigned long long value) {
    const CZRB_String hex = CZRB_String::FromNumber(value, 16, 0, ' ');
    const CZRB_String octal = CZRB_String::FromNumber(value, 8, 0, ' ');
    const CZRB_String decimal = CZRB_String::FromNumber(value, 10, 0, ' ');
    FUZZ_CHECK((hex + "h").ToUnsignedAutoRadix(2) == value);
    FUZZ_CHECK((octal + "o").ToUnsignedAutoRadix(2) == value);
    FUZZ_CHECK(decimal.ToUnsignedAutoRadix(2) == value);
    FUZZ_CHECK(("0x" + hex).ToUnsignedAutoRadix(1) == value);
    FUZZ_CHECK(("h" + hex).ToUnsignedAutoRadix(1) == value);
    FUZZ_CHECK(decimal.ToUnsignedAutoRadix(1) == value);
}

void CheckDoubleText(double value, char conversion, int precision) {
    const double back = CZRB_String::FromNumber(value, 'g', 17).ToDouble();
    FUZZ_CHECK(std::isnan(value) ? std::isnan(back) : back == value);

    const std::string text = FromLib(CZRB_String::FromNumber(value, conversion, precision));
    FUZZ_CHECK(FromLib(CZRB_String().SetFromNumber(value, conversion, precision)) == text);
    const bool known = conversion != 0 && std::strchr("fFgGeE", conversion) != nullptr;
    FUZZ_CHECK(text.empty() != known);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    const unsigned int radix = input.TakeInRange(0, 39);
    const unsigned int wideRadix = input.Take<unsigned int>();
    const unsigned int group = input.TakeInRange(0, 7);
    const char separator = input.Take<char>();
    const unsigned int notation = input.TakeInRange(0, 3);
    const char conversion = input.Take<char>();
    const int precision = static_cast<int>(input.TakeInRange(0, 203)) - 3;
    const CZRB_String text = ToLib(input.TakeRest());

    const long long signedValue = text.ToSigned();
    FUZZ_CHECK(CZRB_String::FromNumber(signedValue).ToSigned() == signedValue);

    const unsigned long long value = text.ToUnsigned(radix);
    CheckRadixText(value, radix, group, separator);
    CheckRadixText(value, wideRadix, group, separator);
    CheckRadixText(~value, 2, 1, separator); // the longest text there is

    const unsigned long long marked = text.ToUnsignedAutoRadix(notation);
    FUZZ_CHECK(notation == 1 || notation == 2 || marked == 0);
    CheckMarkedRadix(marked);
    CheckMarkedRadix(value);

    CheckDoubleText(text.ToDouble(), conversion, precision);
    return 0;
}
