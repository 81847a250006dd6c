#include "demo_sections.h"

#include "CZRB_Color.h"
#include "CZRB_IpAddress.h"
#include "CZRB_Rect.h"
#include "CZRB_WinBitmapData.h"

#include <cstdio>
#include <string>
#include <unistd.h>

namespace {

void Put32(unsigned char* at, unsigned int value) {
    for (int i = 0; i < 4; ++i) {
        at[i] = static_cast<unsigned char>(value >> (8 * i));
    }
}

// Writes a 2 x 2 24-bit bitmap (rows bottom-up, each padded to 8 bytes) and returns 1 on
// success. Top row: orange, white; bottom row: navy, grey.
bool WriteSmallBitmap(const std::string& path) {
    unsigned char bytes[54 + 16] = {'B', 'M'};
    Put32(bytes + 2, sizeof(bytes));
    Put32(bytes + 10, 54);
    Put32(bytes + 14, 40);
    Put32(bytes + 18, 2);
    Put32(bytes + 22, 2);
    bytes[26] = 1;
    bytes[28] = 24;
    const unsigned char pixels[16] = {0x80, 0,    0,    0x80, 0x80, 0x80, 0, 0,  // navy, grey
                                      0x00, 0xA5, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0}; // orange, white
    for (int i = 0; i < 16; ++i) {
        bytes[54 + i] = pixels[i];
    }
    FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) {
        return false;
    }
    const bool written = std::fwrite(bytes, 1, sizeof(bytes), file) == sizeof(bytes);
    return std::fclose(file) == 0 && written;
}

void DemoBitmapPixel() {
    char folder[] = "/tmp/lzrb_demo_XXXXXX";
    if (mkdtemp(folder) == nullptr) {
        std::puts("no temporary folder");
        return;
    }
    const std::string path = std::string(folder) + "/small.bmp";
    if (WriteSmallBitmap(path)) {
        CZRB_WinBitmapData bitmap;
        const unsigned int loaded = bitmap.LoadFromFile(CZRB_String(path.c_str()));
        ZRB::t_WinRgbQuad pixel = {};
        const unsigned int read = bitmap.GetPixelColor(0, 0, pixel);
        std::printf("bitmap %dx%d, %u bits: load %u, pixel (0,0) read %u: R %u G %u B %u\n",
                    bitmap.GetInfo()->biWidth, bitmap.GetInfo()->biHeight,
                    bitmap.GetInfo()->biBitCount, loaded, read, pixel.Red, pixel.Green, pixel.Blue);
        const CZRB_Color colour(static_cast<unsigned char>(pixel.Red),
                                static_cast<unsigned char>(pixel.Green),
                                static_cast<unsigned char>(pixel.Blue));
        unsigned char hue, luminosity, saturation;
        colour.GetHLS(hue, luminosity, saturation);
        std::printf("as colour word 0x%08X: hue %u, luminosity %u, saturation %u (of 240)\n",
                    colour.GetUnsignedColor(), hue, luminosity, saturation);
    }
    std::remove(path.c_str());
    rmdir(folder);
}

} // namespace

void DemoSmallValues() {
    std::puts("== Small values: bitmap pixel, colour, IP address, rectangles ==");
    DemoBitmapPixel();

    const CZRB_IpAddress v4(CZRB_String("192.168.0.1"));
    const CZRB_IpAddress v6(CZRB_String("8193:3512:0:0:0:0:0:1"));
    std::printf("IPv4 %s, IPv6 %s\n", v4.ToString().GetStringC(), v6.ToString().GetStringC());

    const CZRB_Int32Rect a(0, 0, 10, 10);
    const CZRB_Int32Rect b(5, 2, 20, 8);
    const CZRB_Int32Rect both = a & b;
    std::printf("(0,0,10,10) & (5,2,20,8) = (%d,%d,%d,%d), width %d, height %d\n", both.GetLeft(),
                both.GetTop(), both.GetRight(), both.GetBottom(), both.GetWidth(),
                both.GetHeight());
}
