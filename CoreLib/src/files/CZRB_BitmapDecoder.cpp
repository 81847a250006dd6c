#include "CZRB_BitmapDecoder.h"

#include "BitmapHeaders.h"
#include "BitmapRle.h"
#include "BitmapUnpack.h"
#include "CZRB_File.h"

#include <cstring>

namespace {

using ZRB_Bitmap::t_Layout;
using ZRB_Bitmap::t_Palette;

// Decodes uncompressed rows; `data` holds layout.dataSize bytes.
void DecodeRows(const t_Layout& layout, const t_Palette& palette, const unsigned char* data,
                unsigned char* out) {
    const unsigned __int64 rowBytes = 4ULL * layout.width;
    const ZRB_Bitmap::t_Channels channels(layout.masks);
    for (unsigned int stored = 0; stored < layout.height; ++stored) {
        const unsigned char* row = data + static_cast<unsigned __int64>(stored) * layout.rowStride;
        const unsigned int y = layout.topDown ? stored : layout.height - 1 - stored;
        unsigned char* target = out + rowBytes * y;
        if (layout.bitCount <= 8) {
            ZRB_Bitmap::UnpackIndexedRow(row, layout.width, layout.bitCount, palette, target);
        } else {
            ZRB_Bitmap::UnpackMaskedRow(row, layout.width, layout.bitCount, channels, target);
        }
    }
}

// Decodes the pixel data of `layout` into `pixels`; `prefix` holds the colour table. The
// output is allocated only once compressed data has been walked without error.
unsigned int DecodePixels(const t_Layout& layout, const unsigned char* prefix,
                          const unsigned char* data, CZRB_Uint8Vector& pixels) {
    t_Palette palette;
    ZRB_Bitmap::ReadPalette(prefix + layout.paletteOffset, layout.paletteEntries,
                            layout.paletteEntrySize, palette);
    const bool compressed = layout.compression == CZRB_BitmapDecoder::COMPRESSION_RLE8 ||
                            layout.compression == CZRB_BitmapDecoder::COMPRESSION_RLE4;
    if (compressed) {
        const unsigned int result =
            ZRB_Bitmap::DecodeRle(data, layout.dataSize, layout, palette, nullptr);
        if (result != 0) {
            return result;
        }
    }
    // Within the pixel limit, so below 2^32 bytes.
    const unsigned int bytes = 4 * layout.width * layout.height;
    pixels.Create(bytes);
    unsigned char* out = pixels.GetBuf();
    if (!compressed) {
        DecodeRows(layout, palette, data, out);
        return 0;
    }
    for (unsigned int i = 0; i < bytes; i += 4) {
        std::memcpy(out + i, palette.rgba[0], 4);
    }
    return ZRB_Bitmap::DecodeRle(data, layout.dataSize, layout, palette, out);
}

// Decodes into `pixels` and sets `width` and `height` on success; on failure leaves no pixels.
unsigned int Finish(const t_Layout& layout, const unsigned char* prefix, const unsigned char* data,
                    CZRB_Uint8Vector& pixels, unsigned int& width, unsigned int& height) {
    const unsigned int result = DecodePixels(layout, prefix, data, pixels);
    if (result != 0) {
        pixels.DeleteAll();
        return result;
    }
    width = layout.width;
    height = layout.height;
    return 0;
}

} // namespace

CZRB_BitmapDecoder::CZRB_BitmapDecoder()
    : m_header(), m_width(0), m_height(0), m_pixelLimit(DEFAULT_PIXEL_LIMIT) {}

CZRB_BitmapDecoder::CZRB_BitmapDecoder(const CZRB_BitmapDecoder& other)
    : CZRB_Object(other), m_header(), m_width(0), m_height(0), m_pixelLimit(DEFAULT_PIXEL_LIMIT) {
    DataCopy(other);
}

CZRB_BitmapDecoder& CZRB_BitmapDecoder::operator=(const CZRB_BitmapDecoder& other) {
    DataCopy(other);
    return *this;
}

CZRB_BitmapDecoder::~CZRB_BitmapDecoder() {}

void CZRB_BitmapDecoder::DataCopy(const CZRB_BitmapDecoder& other) {
    if (this == &other) {
        return;
    }
    m_header = other.m_header;
    m_width = other.m_width;
    m_height = other.m_height;
    m_pixelLimit = other.m_pixelLimit;
    m_pixels = other.m_pixels;
}

void CZRB_BitmapDecoder::Destroy() {
    m_header = t_Header();
    m_width = 0;
    m_height = 0;
    m_pixels.DeleteAll();
}

unsigned int CZRB_BitmapDecoder::LoadFromMemory(const void* data, unsigned __int64 length) {
    Destroy();
    const unsigned char* bytes = static_cast<const unsigned char*>(data);
    t_Layout layout;
    const unsigned int result =
        ZRB_Bitmap::ReadHeaders(bytes, length, length, m_pixelLimit, m_header, layout);
    if (result != 0) {
        return result;
    }
    return Finish(layout, bytes, bytes + layout.dataOffset, m_pixels, m_width, m_height);
}

unsigned int CZRB_BitmapDecoder::LoadFromFile(const CZRB_String& path) {
    Destroy();
    CZRB_File file;
    if (file.Open(path, CZRB_File::OPEN_READ) != 0) {
        return RESULT_CANNOT_OPEN;
    }
    const unsigned __int64 length = file.GetLength();
    unsigned char prefix[ZRB_Bitmap::kPrefixBytes];
    const unsigned __int64 prefixLength =
        length < ZRB_Bitmap::kPrefixBytes ? length : ZRB_Bitmap::kPrefixBytes;
    if (prefixLength != 0 && file.Read(prefix, prefixLength) != 0) {
        return RESULT_TRUNCATED;
    }
    t_Layout layout;
    unsigned int result =
        ZRB_Bitmap::ReadHeaders(prefix, prefixLength, length, m_pixelLimit, m_header, layout);
    if (result != 0) {
        return result;
    }
    // Only now, with the size checked against the file, is room taken for the pixel data.
    CZRB_Uint8Vector data;
    if (layout.dataSize != 0) {
        data.Create(layout.dataSize);
        result = file.To(layout.dataOffset, 1);
        if (result != 0 || file.Read(data.GetBuf(), layout.dataSize) != 0) {
            return RESULT_TRUNCATED;
        }
    }
    file.Close();
    return Finish(layout, prefix, data.GetBuf(), m_pixels, m_width, m_height);
}

CZRB_BitmapDecoder& CZRB_BitmapDecoder::SetPixelLimit(unsigned int limit) {
    m_pixelLimit = limit < MAX_PIXEL_LIMIT ? limit : MAX_PIXEL_LIMIT;
    return *this;
}

unsigned int CZRB_BitmapDecoder::GetPixelLimit() const {
    return m_pixelLimit;
}

unsigned int CZRB_BitmapDecoder::GetWidth() const {
    return m_width;
}

unsigned int CZRB_BitmapDecoder::GetHeight() const {
    return m_height;
}

unsigned char CZRB_BitmapDecoder::HasAlpha() const {
    return m_width != 0 && m_header.alphaMask != 0 ? 1 : 0;
}

const CZRB_BitmapDecoder::t_Header& CZRB_BitmapDecoder::GetHeader() const {
    return m_header;
}

const CZRB_Uint8Vector& CZRB_BitmapDecoder::GetPixels() const {
    return m_pixels;
}

unsigned int CZRB_BitmapDecoder::GetPixelColor(unsigned int x, unsigned int y,
                                               ZRB::t_WinRgbQuad& colour) const {
    if (x >= m_width || y >= m_height) {
        return 3;
    }
    const unsigned char* rgba =
        m_pixels.GetBuf() + 4 * (static_cast<unsigned __int64>(y) * m_width + x);
    colour.Red = rgba[0];
    colour.Green = rgba[1];
    colour.Blue = rgba[2];
    colour.Reserved = rgba[3];
    return 0;
}
