// Decimal numbers: exact fixed-point values with a digit count of their own.
#include <CZRB_DecimalNumber.h>

#include <cstdio>

int main() {
    const CZRB_DecimalNumber price(2, "12.345", CZRB_DecimalNumber::DECIMAL_POINT_DOT);
    const CZRB_DecimalNumber discount(1, "-0,5", CZRB_DecimalNumber::DECIMAL_POINT_COMMA);
    std::printf("price %s (rounded half up to 2 digits), discount %s\n",
                price.ToString('.').GetStringC(), discount.ToString('.').GetStringC());

    // The result has the left operand's digit count; the right one is converted first.
    const CZRB_DecimalNumber total = price * 100000 + discount;
    std::printf("100000 x price + discount = %s, as double %.3f\n",
                total.ToString('.', ',').GetStringC(), total.ToDouble());
    std::printf("price > discount: %u\n", price > discount);

    // By design a rounding carry stays in the decimals: 2.96 to one digit is 2.1.
    CZRB_DecimalNumber rate(2, 2.96);
    rate.ChangeNumDigits(1);
    std::printf("2.96 with one digit: %s\n", rate.ToString('.').GetStringC());
    return 0;
}
