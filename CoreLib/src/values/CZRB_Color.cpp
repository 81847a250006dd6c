#include "CZRB_Color.h"

#include "CZRB_Buffer.h"

namespace {

const int kHlsMax = 240;
const int kRgbMax = 255;
const int kGreyHue = 170;

// 32-bit arithmetic that wraps in two's complement, as the conversions always did; computed
// through unsigned so that out-of-range SetHLS inputs cannot overflow a signed int.
int WrapAdd(int a, int b) {
    return static_cast<int>(static_cast<unsigned int>(a) + static_cast<unsigned int>(b));
}
int WrapSub(int a, int b) {
    return static_cast<int>(static_cast<unsigned int>(a) - static_cast<unsigned int>(b));
}
int WrapMul(int a, int b) {
    return static_cast<int>(static_cast<unsigned int>(a) * static_cast<unsigned int>(b));
}

// Shifts a hue once into 0..240: +240 when negative, then -240 when above 240.
int ShiftHueOnce(int hue) {
    if (hue < 0) {
        hue = WrapAdd(hue, kHlsMax);
    }
    if (hue > kHlsMax) {
        hue -= kHlsMax;
    }
    return hue;
}

// ((max - component) * 40 + d / 2) / d: the component's distance from the maximum in hue
// sixths.
int HueDelta(int max, int component, int d) {
    return ((max - component) * (kHlsMax / 6) + d / 2) / d;
}

// Low 8 bits of an integer component.
unsigned int LowByte(int value) {
    return static_cast<unsigned int>(value) & 0xFFU;
}

} // namespace

CZRB_Color::CZRB_Color() : m_color(0) {}

CZRB_Color::CZRB_Color(const unsigned int& color) : m_color(color) {}

CZRB_Color::CZRB_Color(const CZRB_Color& other) : CZRB_Object(other), m_color(0) {
    DataCopy(other);
}

CZRB_Color::CZRB_Color(unsigned char red, unsigned char green, unsigned char blue) : m_color(0) {
    SetRGB(red, green, blue);
}

CZRB_Color::~CZRB_Color() {}

CZRB_Color& CZRB_Color::operator=(const CZRB_Color& other) {
    DataCopy(other);
    return *this;
}

CZRB_Color& CZRB_Color::operator=(unsigned int color) {
    m_color = color;
    return *this;
}

CZRB_Color::operator unsigned int() const {
    return m_color;
}

unsigned int CZRB_Color::GetUnsignedColor() const {
    return m_color;
}

void CZRB_Color::DataCopy(const CZRB_Color& other) {
    m_color = other.m_color;
}

CZRB_Color& CZRB_Color::SetRGB(unsigned char red, unsigned char green, unsigned char blue) {
    m_color = static_cast<unsigned int>(red) | (static_cast<unsigned int>(green) << 8) |
              (static_cast<unsigned int>(blue) << 16);
    return *this;
}

CZRB_Color& CZRB_Color::SetR(unsigned char red) {
    return SetRGB(red, GetG(), GetB());
}

CZRB_Color& CZRB_Color::SetG(unsigned char green) {
    return SetRGB(GetR(), green, GetB());
}

CZRB_Color& CZRB_Color::SetB(unsigned char blue) {
    return SetRGB(GetR(), GetG(), blue);
}

void CZRB_Color::GetRGB(unsigned char& red, unsigned char& green, unsigned char& blue) const {
    red = GetR();
    green = GetG();
    blue = GetB();
}

unsigned char CZRB_Color::GetR() const {
    return static_cast<unsigned char>(m_color & 0xFFU);
}

unsigned char CZRB_Color::GetG() const {
    return static_cast<unsigned char>((m_color >> 8) & 0xFFU);
}

unsigned char CZRB_Color::GetB() const {
    return static_cast<unsigned char>((m_color >> 16) & 0xFFU);
}

void CZRB_Color::GetHLS(unsigned char& hue, unsigned char& luminosity,
                        unsigned char& saturation) const {
    const int red = GetR();
    const int green = GetG();
    const int blue = GetB();
    const int max = red > green ? (red > blue ? red : blue) : (green > blue ? green : blue);
    const int min = red < green ? (red < blue ? red : blue) : (green < blue ? green : blue);
    const int sum = max + min;
    const int lum = (sum * kHlsMax + kRgbMax) / (2 * kRgbMax);
    int sat = 0;
    int h = kGreyHue;
    if (max != min) {
        const int d = max - min;
        if (lum <= kHlsMax / 2) {
            sat = (d * kHlsMax + sum / 2) / sum;
        } else {
            const int rest = 2 * kRgbMax - sum;
            sat = (d * kHlsMax + rest / 2) / rest;
        }
        const int redDelta = HueDelta(max, red, d);
        const int greenDelta = HueDelta(max, green, d);
        const int blueDelta = HueDelta(max, blue, d);
        if (red == max) {
            h = blueDelta - greenDelta;
        } else if (green == max) {
            h = kHlsMax / 3 + redDelta - blueDelta;
        } else {
            h = 2 * kHlsMax / 3 + greenDelta - redDelta;
        }
        h = ShiftHueOnce(h);
    }
    hue = static_cast<unsigned char>(h);
    luminosity = static_cast<unsigned char>(lum);
    saturation = static_cast<unsigned char>(sat);
}

unsigned char CZRB_Color::GetHue() const {
    unsigned char hue, luminosity, saturation;
    GetHLS(hue, luminosity, saturation);
    return hue;
}

unsigned char CZRB_Color::GetLuminosity() const {
    unsigned char hue, luminosity, saturation;
    GetHLS(hue, luminosity, saturation);
    return luminosity;
}

unsigned char CZRB_Color::GetSaturation() const {
    unsigned char hue, luminosity, saturation;
    GetHLS(hue, luminosity, saturation);
    return saturation;
}

int CZRB_Color::HueToRGB(int magic1, int magic2, int hue) {
    hue = ShiftHueOnce(hue);
    const int span = WrapSub(magic2, magic1);
    if (hue < kHlsMax / 6) {
        return WrapAdd(magic1, WrapAdd(WrapMul(span, hue), kHlsMax / 12) / (kHlsMax / 6));
    }
    if (hue < kHlsMax / 2) {
        return magic2;
    }
    if (hue < 2 * kHlsMax / 3) {
        const int rest = 2 * kHlsMax / 3 - hue;
        return WrapAdd(magic1, WrapAdd(WrapMul(span, rest), kHlsMax / 12) / (kHlsMax / 6));
    }
    return magic1;
}

CZRB_Color& CZRB_Color::SetHLS(unsigned short hue, unsigned short luminosity,
                               unsigned short saturation) {
    const int h = hue;
    const int lum = luminosity;
    const int sat = saturation;
    if (sat == 0) {
        const unsigned int grey = LowByte(lum * kRgbMax / kHlsMax);
        m_color = grey | (grey << 8) | (grey << 16);
        return *this;
    }
    int magic2;
    if (lum <= kHlsMax / 2) {
        magic2 = (lum * (kHlsMax + sat) + kHlsMax / 2) / kHlsMax;
    } else {
        magic2 = lum + sat - WrapAdd(WrapMul(lum, sat), kHlsMax / 2) / kHlsMax;
    }
    const int magic1 = WrapSub(2 * lum, magic2);
    const auto component = [&](int shiftedHue) {
        const int value = HueToRGB(magic1, magic2, shiftedHue);
        return LowByte(WrapAdd(WrapMul(value, kRgbMax), kHlsMax / 2) / kHlsMax);
    };
    const unsigned int red = component(h + kHlsMax / 3);
    const unsigned int green = component(h);
    const unsigned int blue = component(h - kHlsMax / 3);
    m_color = red | (green << 8) | (blue << 16);
    return *this;
}

CZRB_Color& CZRB_Color::SetHue(unsigned char hue) {
    unsigned char oldHue, luminosity, saturation;
    GetHLS(oldHue, luminosity, saturation);
    return SetHLS(hue, luminosity, saturation);
}

CZRB_Color& CZRB_Color::SetLuminosity(unsigned char luminosity) {
    unsigned char hue, oldLuminosity, saturation;
    GetHLS(hue, oldLuminosity, saturation);
    return SetHLS(hue, luminosity, saturation);
}

CZRB_Color& CZRB_Color::SetSaturation(unsigned char saturation) {
    unsigned char hue, luminosity, oldSaturation;
    GetHLS(hue, luminosity, oldSaturation);
    return SetHLS(hue, luminosity, saturation);
}

CZRB_Buffer& operator<<(CZRB_Buffer& buffer, const CZRB_Color& color) {
    return buffer << color.GetUnsignedColor();
}

CZRB_Buffer& operator>>(CZRB_Buffer& buffer, CZRB_Color& color) {
    unsigned int word = 0;
    buffer >> word;
    color = word;
    return buffer;
}
