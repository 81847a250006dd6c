// Turning stored BMP pixels into RGBA: colour tables for palette images, bit masks for
// direct colour, and the unpacking of one uncompressed row of either kind.
#ifndef LZRB_BITMAP_UNPACK_H
#define LZRB_BITMAP_UNPACK_H

namespace ZRB_Bitmap {

// A colour table as RGBA for every possible index; entries the file does not give are
// opaque black.
struct t_Palette {
    unsigned char rgba[256][4];
};

// Fills `palette` from `count` (at most 256) entries of `entrySize` bytes each, blue, green,
// red and (4-byte entries) an unused byte.
void ReadPalette(const unsigned char* entries, unsigned int count, unsigned int entrySize,
                 t_Palette& palette);

// 1 when `mask` is 0 or one contiguous run of bits inside a pixel of `bitCount` bits.
bool IsUsableMask(unsigned int mask, unsigned int bitCount);

// One colour channel selected by a mask, scaled to 8 bits: a channel of n < 8 bits repeats
// its bit pattern, one of n > 8 bits keeps its top 8 bits, an empty mask gives 0.
class CChannel {
public:
    // A channel for a usable mask (see IsUsableMask).
    explicit CChannel(unsigned int mask);
    // The channel of `pixel` as 8 bits.
    unsigned char Extract(unsigned int pixel) const {
        const unsigned int value = (pixel & m_mask) >> m_shift;
        return m_bits <= 8 ? m_scaled[value] : static_cast<unsigned char>(value >> (m_bits - 8));
    }

private:
    unsigned int m_mask;
    unsigned int m_shift;
    unsigned int m_bits;
    unsigned char m_scaled[256]; // 8-bit value of each channel value (channels of <= 8 bits)
};

// The four channels of a direct-colour pixel; without alpha mask alpha is 255.
struct t_Channels {
    CChannel red;
    CChannel green;
    CChannel blue;
    CChannel alpha;
    bool hasAlpha;

    // Channels for masks red, green, blue, alpha.
    explicit t_Channels(const unsigned int masks[4]);
};

// Writes `width` RGBA pixels from a stored row of `bitCount`-bit palette indexes (1, 2, 4 or
// 8 bits, the leftmost pixel in the most significant bits of a byte).
void UnpackIndexedRow(const unsigned char* row, unsigned int width, unsigned int bitCount,
                      const t_Palette& palette, unsigned char* out);

// Writes `width` RGBA pixels from a stored row of little-endian 16-, 24- or 32-bit pixels.
void UnpackMaskedRow(const unsigned char* row, unsigned int width, unsigned int bitCount,
                     const t_Channels& channels, unsigned char* out);

} // namespace ZRB_Bitmap

#endif
