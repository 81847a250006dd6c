#include "BitmapUnpack.h"

#include <cstddef>
#include <cstring>

namespace ZRB_Bitmap {

void ReadPalette(const unsigned char* entries, unsigned int count, unsigned int entrySize,
                 t_Palette& palette) {
    for (unsigned int i = 0; i < 256; ++i) {
        unsigned char* rgba = palette.rgba[i];
        if (i < count) {
            const unsigned char* entry = entries + i * entrySize;
            rgba[0] = entry[2];
            rgba[1] = entry[1];
            rgba[2] = entry[0];
        } else {
            rgba[0] = rgba[1] = rgba[2] = 0;
        }
        rgba[3] = 255;
    }
}

bool IsUsableMask(unsigned int mask, unsigned int bitCount) {
    if (mask == 0) {
        return true;
    }
    if (bitCount < 32 && (mask >> bitCount) != 0) {
        return false;
    }
    while ((mask & 1U) == 0) {
        mask >>= 1;
    }
    // A contiguous run shifted down is 2^n - 1, so adding 1 clears every bit (wrapping for
    // the full 32-bit mask).
    return (mask & (mask + 1U)) == 0;
}

CChannel::CChannel(unsigned int mask) : m_mask(mask), m_shift(0), m_bits(0), m_scaled() {
    if (mask == 0) {
        return; // every value is 0, scaled to 0
    }
    while (((mask >> m_shift) & 1U) == 0) {
        ++m_shift;
    }
    while (m_shift + m_bits < 32 && ((mask >> (m_shift + m_bits)) & 1U) != 0) {
        ++m_bits;
    }
    if (m_bits > 8) {
        return;
    }
    // Repeat the n-bit pattern until it fills 8 bits: for 5 bits (v << 3) | (v >> 2).
    for (unsigned int value = 0; value < (1U << m_bits); ++value) {
        unsigned int repeated = 0;
        unsigned int filled = 0;
        while (filled < 8) {
            repeated = (repeated << m_bits) | value;
            filled += m_bits;
        }
        m_scaled[value] = static_cast<unsigned char>(repeated >> (filled - 8));
    }
}

t_Channels::t_Channels(const unsigned int masks[4])
    : red(masks[0]), green(masks[1]), blue(masks[2]), alpha(masks[3]), hasAlpha(masks[3] != 0) {}

void UnpackIndexedRow(const unsigned char* row, unsigned int width, unsigned int bitCount,
                      const t_Palette& palette, unsigned char* out) {
    const unsigned int perByte = 8 / bitCount;
    const unsigned int valueMask = (1U << bitCount) - 1;
    for (unsigned int x = 0; x < width; ++x) {
        const unsigned int shift = 8 - bitCount * (x % perByte + 1);
        const unsigned int index = (row[x / perByte] >> shift) & valueMask;
        std::memcpy(out + 4 * static_cast<std::size_t>(x), palette.rgba[index], 4);
    }
}

void UnpackMaskedRow(const unsigned char* row, unsigned int width, unsigned int bitCount,
                     const t_Channels& channels, unsigned char* out) {
    const unsigned int bytesPerPixel = bitCount / 8;
    for (unsigned int x = 0; x < width; ++x) {
        const unsigned char* bytes = row + static_cast<std::size_t>(x) * bytesPerPixel;
        unsigned int pixel = 0;
        for (unsigned int i = bytesPerPixel; i-- > 0;) {
            pixel = (pixel << 8) | bytes[i];
        }
        unsigned char* rgba = out + 4 * static_cast<std::size_t>(x);
        rgba[0] = channels.red.Extract(pixel);
        rgba[1] = channels.green.Extract(pixel);
        rgba[2] = channels.blue.Extract(pixel);
        rgba[3] = channels.hasAlpha ? channels.alpha.Extract(pixel) : 255;
    }
}

} // namespace ZRB_Bitmap
