/// @file
/// CZRB_Color: one RGB colour in a 32-bit word laid out as 0x00BBGGRR (red in bits 0-7, green
/// in 8-15, blue in 16-23), with integer conversion to and from hue, luminosity and saturation
/// on a 0-240 scale.
#ifndef CZRB_COLOR_H
#define CZRB_COLOR_H

#include "CZRB_Object.h"

class CZRB_Buffer;

/// One RGB colour in a 32-bit word laid out as 0x00BBGGRR (red in bits 0-7, green in 8-15,
/// blue in 16-23), with integer conversion to and from hue, luminosity and saturation on a
/// 0-240 scale.
///
/// Bits 24-31 are kept when the whole word is assigned and cleared by every operation that
/// rebuilds the word from components.
class LZRB_API CZRB_Color : public CZRB_Object {
public:
    /// Black: the word 0.
    CZRB_Color();
    /// The word as it is, bits 24-31 included.
    CZRB_Color(const unsigned int& color);
    /// Copies the word.
    CZRB_Color(const CZRB_Color& other);
    /// The colour (red, green, blue); bits 24-31 are 0.
    CZRB_Color(unsigned char red, unsigned char green, unsigned char blue);
    /// Nothing to free.
    ~CZRB_Color() override;

    /// Copies the word; returns this colour.
    CZRB_Color& operator=(const CZRB_Color& other);
    /// Takes the word as it is, bits 24-31 included; returns this colour.
    CZRB_Color& operator=(unsigned int color);
    /// The word.
    operator unsigned int() const;
    /// The word.
    unsigned int GetUnsignedColor() const;

    /// Rebuilds the word from the three components (bits 24-31 become 0); returns this colour.
    CZRB_Color& SetRGB(unsigned char red, unsigned char green, unsigned char blue);
    /// Replaces red and clears bits 24-31; returns this colour.
    CZRB_Color& SetR(unsigned char red);
    /// Replaces green and clears bits 24-31; returns this colour.
    CZRB_Color& SetG(unsigned char green);
    /// Replaces blue and clears bits 24-31; returns this colour.
    CZRB_Color& SetB(unsigned char blue);
    /// Stores the three components in the arguments.
    void GetRGB(unsigned char& red, unsigned char& green, unsigned char& blue) const;
    /// Red, bits 0-7.
    unsigned char GetR() const;
    /// Green, bits 8-15.
    unsigned char GetG() const;
    /// Blue, bits 16-23.
    unsigned char GetB() const;

    /// Converts to hue, luminosity and saturation (0-240 scale, rounded integer arithmetic).
    /// A grey gets saturation 0 and hue 170 (kept as shipped: 170 is not two thirds of 240).
    void GetHLS(unsigned char& hue, unsigned char& luminosity, unsigned char& saturation) const;
    /// The hue of GetHLS.
    unsigned char GetHue() const;
    /// The luminosity of GetHLS.
    unsigned char GetLuminosity() const;
    /// The saturation of GetHLS.
    unsigned char GetSaturation() const;

    /// Rebuilds the word from hue, luminosity and saturation (bits 24-31 become 0); returns
    /// this colour. No range check: values above 240 enter the formulas as they are, and the
    /// 32-bit intermediate results wrap.
    CZRB_Color& SetHLS(unsigned short hue, unsigned short luminosity, unsigned short saturation);
    /// Replaces the hue of the current HLS triple and calls SetHLS; returns this colour.
    CZRB_Color& SetHue(unsigned char hue);
    /// Replaces the luminosity of the current HLS triple and calls SetHLS; returns this colour.
    CZRB_Color& SetLuminosity(unsigned char luminosity);
    /// Replaces the saturation of the current HLS triple and calls SetHLS; returns this colour.
    CZRB_Color& SetSaturation(unsigned char saturation);

protected:
    /// Copies the word from `other`.
    void DataCopy(const CZRB_Color& other);

private:
    /// One component of SetHLS from the two magic values and a hue shifted once into 0..240.
    int HueToRGB(int magic1, int magic2, int hue);

    unsigned int m_color;
};

/// Writes the whole 32-bit word with the stream's unsigned 32-bit insertion; returns the
/// stream. Stream codes: 23 when the stream is not writable.
/// @relatesalso CZRB_Color
LZRB_API CZRB_Buffer& operator<<(CZRB_Buffer& buffer, const CZRB_Color& color);
/// Reads the whole 32-bit word with the stream's unsigned 32-bit extraction; returns the
/// stream. Stream codes: 24 not readable, 3 fewer than four bytes left (colour unchanged).
/// @relatesalso CZRB_Color
LZRB_API CZRB_Buffer& operator>>(CZRB_Buffer& buffer, CZRB_Color& color);

#endif
