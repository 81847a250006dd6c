#include "BitmapRle.h"

#include <cstring>

namespace ZRB_Bitmap {

namespace {

const unsigned char kEndOfLine = 0;
const unsigned char kEndOfBitmap = 1;
const unsigned char kDelta = 2;

// Where decoded indexes go: x counts from the left, row counts stored rows.
class CRleTarget {
public:
    CRleTarget(const t_Layout& layout, const t_Palette& palette, unsigned char* out)
        : m_layout(layout), m_palette(palette), m_out(out) {}

    void Put(unsigned int x, unsigned int row, unsigned int index) const {
        if (m_out == nullptr) {
            return;
        }
        const unsigned int y = m_layout.topDown ? row : m_layout.height - 1 - row;
        const unsigned __int64 pixel = static_cast<unsigned __int64>(y) * m_layout.width + x;
        std::memcpy(m_out + 4 * pixel, m_palette.rgba[index], 4);
    }

private:
    const t_Layout& m_layout;
    const t_Palette& m_palette;
    unsigned char* m_out;
};

// Index i of stored indexes: RLE8 keeps one per byte, RLE4 two per byte, high nibble first.
unsigned int IndexOf(const unsigned char* bytes, unsigned int i, bool rle4) {
    if (!rle4) {
        return bytes[i];
    }
    const unsigned char byte = bytes[i / 2];
    return (i & 1U) != 0 ? (byte & 0x0FU) : (byte >> 4);
}

// Index i of an encoded run of `value`: RLE4 alternates its two nibbles.
unsigned int RunIndexOf(unsigned char value, unsigned int i, bool rle4) {
    return rle4 ? IndexOf(&value, i & 1U, true) : value;
}

} // namespace

unsigned int DecodeRle(const unsigned char* data, unsigned int size, const t_Layout& layout,
                       const t_Palette& palette, unsigned char* out) {
    const CRleTarget target(layout, palette, out);
    const bool rle4 = layout.compression == CZRB_BitmapDecoder::COMPRESSION_RLE4;
    const unsigned int width = layout.width;
    unsigned int x = 0; // never beyond width: what a run puts past the row end is dropped
    unsigned int row = 0;
    unsigned int pos = 0;
    while (row < layout.height) {
        if (size - pos < 2) {
            return CZRB_BitmapDecoder::RESULT_TRUNCATED;
        }
        const unsigned char count = data[pos];
        const unsigned char value = data[pos + 1];
        pos += 2;
        if (count != 0) {
            const unsigned int kept = count < width - x ? count : width - x;
            for (unsigned int i = 0; i < kept; ++i) {
                target.Put(x + i, row, RunIndexOf(value, i, rle4));
            }
            x += kept;
        } else if (value == kEndOfLine) {
            x = 0;
            ++row;
        } else if (value == kEndOfBitmap) {
            return 0;
        } else if (value == kDelta) {
            if (size - pos < 2) {
                return CZRB_BitmapDecoder::RESULT_TRUNCATED;
            }
            x = data[pos] < width - x ? x + data[pos] : width;
            row += data[pos + 1]; // at most 255 past the last row: no wrap
            pos += 2;
        } else {
            const unsigned int bytes = rle4 ? (value + 1U) / 2 : value;
            const unsigned int padded = bytes + (bytes & 1U);
            if (size - pos < padded) {
                return CZRB_BitmapDecoder::RESULT_TRUNCATED;
            }
            const unsigned int kept = value < width - x ? value : width - x;
            for (unsigned int i = 0; i < kept; ++i) {
                target.Put(x + i, row, IndexOf(data + pos, i, rle4));
            }
            x += kept;
            pos += padded;
        }
    }
    return 0;
}

} // namespace ZRB_Bitmap
