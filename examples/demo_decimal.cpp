#include "demo_sections.h"

#include "CZRB_Code.h"
#include "CZRB_DecimalNumber.h"
#include "CZRB_Dumper.h"

#include <cstdio>

void DemoDecimal() {
    std::puts("== Decimal numbers, format codes, dumper ==");
    CZRB_DecimalNumber price(2, "1234567.891", CZRB_DecimalNumber::DECIMAL_POINT_DOT);
    CZRB_DecimalNumber discount(1, "-0,5", CZRB_DecimalNumber::DECIMAL_POINT_COMMA);
    CZRB_DecimalNumber total = price * 3 + discount;
    std::printf("3 x %s + (%s) = %s\n", price.ToString('.').GetStringC(),
                discount.ToString('.').GetStringC(), total.ToString(',', '.').GetStringC());
    std::printf("as double: %.2f, sign %d, integral %llu, decimal %u\n", total.ToDouble(),
                total.GetSign(), total.GetIntegral(),
                static_cast<unsigned int>(total.GetDecimal()));

    CZRB_DecimalNumber rate(2, 2.96);
    CZRB_DecimalNumber rounded(rate);
    rounded.ChangeNumDigits(1);
    std::printf("%s re-scaled to one digit: %s (the rounding carry stays in the decimals)\n",
                rate.ToString('.').GetStringC(), rounded.ToString('.').GetStringC());

    CZRB_Code code(CZRB_String("ID<year>-<serial>"));
    code.Set(CZRB_String("ref: ID2026-00042"));
    std::printf("code fields: year=%s serial=%s\n", code.GetField(CZRB_String("year")).GetStringC(),
                code.GetField(CZRB_String("serial")).GetStringC());
    code.SetField(CZRB_String("serial"), CZRB_String("00043"));
    std::printf("next code: %s\n", code.GetString().GetStringC());

    std::fflush(stdout);
    CZRB_Dumper() << "dumper: " << 42 << " " << 2.5 << " " << code.GetString();
}
