// Small values: colours in RGB and HLS, IP addresses, rectangles.
#include <CZRB_Color.h>
#include <CZRB_IpAddress.h>
#include <CZRB_Rect.h>

#include <cstdio>

int main() {
    CZRB_Color orange(255, 165, 0);
    unsigned char hue = 0, luminosity = 0, saturation = 0;
    orange.GetHLS(hue, luminosity, saturation);
    std::printf("orange 0x%08X: hue %u, luminosity %u, saturation %u (of 240)\n",
                orange.GetUnsignedColor(), hue, luminosity, saturation);
    orange.SetLuminosity(60);
    std::printf("darker: red %u green %u blue %u\n", orange.GetR(), orange.GetG(), orange.GetB());

    const CZRB_IpAddress v4(CZRB_String("192.168.0.1"));
    const CZRB_IpAddress v6(CZRB_String("8193:3512:0:0:0:0:0:1")); // groups read as decimal
    const CZRB_IpAddress shorthand(CZRB_String("::1"));            // not supported: invalid
    std::printf("%s | %s | '%s'\n", v4.ToString().GetStringC(), v6.ToString().GetStringC(),
                shorthand.ToString().GetStringC());

    const CZRB_Int32Rect a(0, 0, 10, 10);
    const CZRB_Int32Rect b(5, 2, 20, 8);
    const CZRB_Int32Rect both = a & b;
    const CZRB_Int32Rect all = a | b;
    std::printf("a & b = (%d, %d, %d, %d), a | b = (%d, %d, %d, %d)\n", both.GetLeft(),
                both.GetTop(), both.GetRight(), both.GetBottom(), all.GetLeft(), all.GetTop(),
                all.GetRight(), all.GetBottom());
    std::printf("(10, 10) inside a: %u inclusive, %u exclusive\n", a.IsInside(10, 10, 1),
                a.IsInside(10, 10, 0));
    return 0;
}
