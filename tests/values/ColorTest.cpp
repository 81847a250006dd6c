#include "CZRB_Color.h"
#include "CZRB_Exception.h"
#include "CZRB_MemoryBuffer.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>

TEST(Color, RgbToHlsKnownValues) {
    // Red, green, blue, then hue, luminosity, saturation.
    const std::array<int, 6> cases[] = {{255, 0, 0, 0, 120, 240},     {0, 255, 0, 80, 120, 240},
                                        {0, 0, 255, 160, 120, 240},   {128, 128, 128, 170, 120, 0},
                                        {255, 255, 255, 170, 240, 0}, {0, 0, 0, 170, 0, 0},
                                        {255, 255, 0, 40, 120, 240},  {255, 0, 255, 200, 120, 240},
                                        {10, 20, 30, 140, 19, 120},   {200, 100, 50, 13, 118, 144}};
    for (const auto& c : cases) {
        unsigned char h, l, s;
        CZRB_Color(static_cast<unsigned char>(c[0]), static_cast<unsigned char>(c[1]),
                   static_cast<unsigned char>(c[2]))
            .GetHLS(h, l, s);
        EXPECT_EQ((std::array<int, 3>{h, l, s}), (std::array<int, 3>{c[3], c[4], c[5]}))
            << c[0] << "," << c[1] << "," << c[2];
    }
}

TEST(Color, HlsToRgbAndSingleSetters) {
    CZRB_Color color;
    EXPECT_EQ(color.SetHLS(0, 120, 240).GetUnsignedColor(), 0x000000FFU);
    EXPECT_EQ(color.SetHLS(80, 120, 240).GetUnsignedColor(), 0x0000FF00U);
    EXPECT_EQ(color.SetHLS(160, 120, 240).GetUnsignedColor(), 0x00FF0000U);
    for (unsigned short h : {0, 77, 170, 239, 500}) {
        EXPECT_EQ(color.SetHLS(h, 240, 0).GetUnsignedColor(), 0x00FFFFFFU);
    }
    // Grey values have no rounding term: 100 * 255 / 240 = 106.
    EXPECT_EQ(color.SetHLS(0, 100, 0).GetR(), 106);

    CZRB_Color grey(90, 90, 90);
    grey.SetHue(30);
    EXPECT_EQ(grey.GetSaturation(), 0);
    EXPECT_EQ(grey.GetR(), grey.GetB());

    CZRB_Color red(255, 0, 0);
    red.SetLuminosity(60);
    EXPECT_EQ(red.GetUnsignedColor(), 0x00000080U); // magic2 120, (120*255+120)/240
    red.SetSaturation(0);
    EXPECT_EQ(red.GetR(), red.GetG());

    // Out-of-range inputs enter the formulas and wrap; the result only has to be defined.
    color.SetHLS(65535, 65535, 65535);
    EXPECT_EQ(color.GetUnsignedColor() >> 24, 0U);
}

TEST(Color, TopByteIsKeptOnlyByWholeWordAssignment) {
    CZRB_Color color(0xFF102030U);
    EXPECT_EQ(static_cast<unsigned int>(color), 0xFF102030U);
    EXPECT_EQ(color.GetR() + (color.GetG() << 8) + (color.GetB() << 16), 0x102030);
    color.SetR(1);
    EXPECT_EQ(color.GetUnsignedColor(), 0x00102001U);
    color = 0xAB000000U;
    CZRB_Color copy(color);
    EXPECT_EQ(copy.GetUnsignedColor(), 0xAB000000U);
    copy.SetHue(10);
    EXPECT_EQ(copy.GetUnsignedColor() >> 24, 0U);
}

// HLS is a lossy 0-240 scale: converting any colour there and back must land within a few
// units of every component.
TEST(Color, HlsRoundTripStaysCloseOverTheCube) {
    for (int r = 0; r < 256; r += 5) {
        for (int g = 0; g < 256; g += 7) {
            for (int b = 0; b < 256; b += 3) {
                const CZRB_Color original(static_cast<unsigned char>(r),
                                          static_cast<unsigned char>(g),
                                          static_cast<unsigned char>(b));
                unsigned char h, l, s;
                original.GetHLS(h, l, s);
                ASSERT_TRUE(h <= 240 && l <= 240 && s <= 240);
                const CZRB_Color back = CZRB_Color().SetHLS(h, l, s);
                ASSERT_LE(std::abs(back.GetR() - r) + std::abs(back.GetG() - g) +
                              std::abs(back.GetB() - b),
                          12)
                    << r << "," << g << "," << b;
            }
        }
    }
}

TEST(Color, StreamRecordIsTheWholeWordLittleEndian) {
    CZRB_MemoryBuffer buffer(3); // blocks smaller than one record
    const CZRB_Color first(0xFF102030U);
    const CZRB_Color second(1, 2, 3);
    buffer << first << second;
    EXPECT_EQ(buffer.GetSize(), 8U);
    buffer.ToStart();
    CZRB_Color a, b(7, 7, 7);
    buffer >> a >> b;
    EXPECT_EQ(a.GetUnsignedColor(), 0xFF102030U);
    EXPECT_EQ(b.GetUnsignedColor(), 0x00030201U);
    EXPECT_THROW(buffer >> b, CZRB_Exception); // nothing left: code 3 from the stream
    EXPECT_EQ(b.GetUnsignedColor(), 0x00030201U);
}
