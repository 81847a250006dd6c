#include "CZRB_WinBitmapData.h"

#include "CZRB_Exception.h"
#include "CZRB_File.h"
#include "files/BitmapHeaders.h"

#include <cstring>

namespace {

using ZRB_Bitmap::Le16;
using ZRB_Bitmap::Le32;
using ZRB_Bitmap::LeInt32;

const unsigned int kFileHeaderSize = 14;
const unsigned int kMinimumFileSize = 18;
const unsigned int kMinimumBitmapSize = 54;
const unsigned int kShortHeaderSize = 40;
const unsigned int kResultBadCoordinates = 3;
const unsigned int kResultUnsupportedDepth = 8;
const unsigned int kResultWrongHeaderOrNoPalette = 10;
const unsigned int kResultNotBitmap = 11;
const unsigned int kResultNoFile = 30;

// 32-bit signed arithmetic that wraps in two's complement, as the header arithmetic always
// did; computed through unsigned so that hostile header values cannot overflow.
int WrapAdd(int a, int b) {
    return static_cast<int>(static_cast<unsigned int>(a) + static_cast<unsigned int>(b));
}
int WrapMul(int a, int b) {
    return static_cast<int>(static_cast<unsigned int>(a) * static_cast<unsigned int>(b));
}

// The bit length of one row: bit count * width, wrapping.
int RowBits(const CZRB_WinBitmapData::SInfoHeader& header) {
    return WrapMul(header.biBitCount, header.biWidth);
}

} // namespace

CZRB_WinBitmapData::CZRB_WinBitmapData()
    : m_header(), m_dataOffset(0), m_colorCount(0), m_rowStride(0) {}

CZRB_WinBitmapData::CZRB_WinBitmapData(const CZRB_WinBitmapData& other)
    : CZRB_Object(other), m_header(), m_dataOffset(0), m_colorCount(0), m_rowStride(0) {
    DataCopy(other);
}

CZRB_WinBitmapData& CZRB_WinBitmapData::operator=(const CZRB_WinBitmapData& other) {
    DataCopy(other);
    return *this;
}

CZRB_WinBitmapData::~CZRB_WinBitmapData() {}

void CZRB_WinBitmapData::DataCopy(const CZRB_WinBitmapData& other) {
    if (this == &other) {
        return;
    }
    m_header = other.m_header;
    m_dataOffset = other.m_dataOffset;
    m_colorCount = other.m_colorCount;
    m_rowStride = other.m_rowStride;
    m_palette = other.m_palette;
    m_pixels = other.m_pixels;
}

void CZRB_WinBitmapData::Destroy() {
    m_pixels.DeleteAll();
    m_palette.DeleteAll();
    m_header.biWidth = 0;
    m_header.biHeight = 0;
    m_header.biBitCount = 0;
    m_header.biCompression = 0;
}

unsigned int CZRB_WinBitmapData::ReadInfoFromFile(const CZRB_String& path, SInfoHeader& header,
                                                  unsigned int* dataOffset) {
    CZRB_File file;
    if (file.Open(path, CZRB_File::OPEN_READ) != 0) {
        return kResultNoFile;
    }
    const unsigned int result = ReadInfoFromFile(file, header, dataOffset);
    file.Close();
    return result;
}

unsigned int CZRB_WinBitmapData::ReadInfoFromFile(CZRB_File& file, SInfoHeader& header,
                                                  unsigned int* dataOffset) {
    if (!file.IsOpen()) {
        return kResultNotBitmap;
    }
    file.ToStart();
    const unsigned __int64 length = file.GetLength();
    if (length < kMinimumFileSize) {
        return kResultNotBitmap;
    }
    // Short reads are not checked: the length tests above and below cover every byte read.
    unsigned char bytes[kMinimumBitmapSize] = {};
    file.Read(bytes, 2);
    if (bytes[0] != 'B' || bytes[1] != 'M') {
        return kResultNotBitmap;
    }
    file.Read(bytes + 2, kMinimumFileSize - 2);
    if (dataOffset != nullptr) {
        *dataOffset = Le32(bytes + 10);
    }
    header.biSize = Le32(bytes + 14);
    if (header.biSize != 40 && header.biSize != 108 && header.biSize != 124) {
        return kResultNotBitmap;
    }
    if (length < kMinimumBitmapSize) {
        return kResultNotBitmap;
    }
    file.Read(bytes + kMinimumFileSize, kMinimumBitmapSize - kMinimumFileSize);
    header.biWidth = LeInt32(bytes + 18);
    header.biHeight = LeInt32(bytes + 22);
    header.biPlanes = Le16(bytes + 26);
    header.biBitCount = Le16(bytes + 28);
    header.biCompression = Le32(bytes + 30);
    header.biSizeImage = Le32(bytes + 34);
    header.biXPelsPerMeter = LeInt32(bytes + 38);
    header.biYPelsPerMeter = LeInt32(bytes + 42);
    header.biClrUsed = Le32(bytes + 46);
    header.biClrImportant = Le32(bytes + 50);
    if (header.biSizeImage == 0) {
        const int words = WrapAdd(RowBits(header), 31) / 32;
        header.biSizeImage = static_cast<unsigned int>(WrapMul(WrapMul(words, header.biHeight), 4));
    }
    return 0;
}

unsigned int CZRB_WinBitmapData::LoadFromFile(const CZRB_String& path) {
    CZRB_File file;
    if (file.Open(path, CZRB_File::OPEN_READ) != 0) {
        return kResultNoFile;
    }
    unsigned int result = ReadInfoFromFile(file, m_header, &m_dataOffset);
    if (result != 0) {
        return result;
    }
    const unsigned __int64 length = file.GetLength();
    result = LoadPalette(file, length);
    if (result == 0) {
        result = LoadPixels(file, length);
    }
    if (result != 0) {
        Destroy();
        return result;
    }
    SetIntParams();
    file.Close();
    return 0;
}

unsigned int CZRB_WinBitmapData::LoadPalette(CZRB_File& file, unsigned __int64 fileLength) {
    m_palette.DeleteAll();
    const unsigned int entries = PaletteEntries(m_header);
    if (entries == 0) {
        return 0;
    }
    const unsigned __int64 start = kFileHeaderSize + static_cast<unsigned __int64>(m_header.biSize);
    const unsigned __int64 bytes = 4ULL * entries;
    if (start + bytes > fileLength) {
        return kResultNoFile;
    }
    unsigned int result = file.To(start, 1);
    if (result != 0) {
        return result;
    }
    m_palette.Create(entries);
    result = file.Read(m_palette.GetBuf(), bytes);
    if (result != 0) {
        return result;
    }
    // Entries are stored little-endian; rebuild them so that the host order does not matter.
    for (unsigned int i = 0; i < entries; ++i) {
        unsigned char raw[4];
        std::memcpy(raw, m_palette.GetBuf() + i, sizeof(raw));
        m_palette.GetBuf()[i] = Le32(raw);
    }
    return 0;
}

unsigned int CZRB_WinBitmapData::LoadPixels(CZRB_File& file, unsigned __int64 fileLength) {
    m_pixels.DeleteAll();
    const unsigned int size = m_header.biSizeImage;
    if (size == 0) {
        // Kept as shipped: the byte vector refuses the zero size with code 9.
        Destroy();
        m_pixels.Create(0);
    }
    if (static_cast<unsigned __int64>(m_dataOffset) + size > fileLength) {
        return kResultNoFile;
    }
    const unsigned int result = file.To(m_dataOffset, 1);
    if (result != 0) {
        return result;
    }
    m_pixels.Create(size);
    return file.Read(m_pixels.GetBuf(), size);
}

void CZRB_WinBitmapData::SetIntParams() {
    if (m_header.biSize != kShortHeaderSize) {
        return;
    }
    if (!HasPalette(m_header)) {
        const unsigned int bits = m_header.biBitCount;
        m_colorCount = bits < 16 ? ((1U << bits) & 0xFFFFU) : 0;
        m_rowStride = static_cast<unsigned int>(WrapAdd(RowBits(m_header), 31) / 32);
    } else {
        const int rowBytes = WrapAdd(RowBits(m_header), 7) / 8;
        m_rowStride = static_cast<unsigned int>(WrapMul(WrapAdd(rowBytes, 3) / 4, 4));
    }
}

const CZRB_WinBitmapData::SInfoHeader* CZRB_WinBitmapData::GetInfo() {
    return &m_header;
}

unsigned int CZRB_WinBitmapData::GetPaletteDepth() {
    return GetPaletteDepth(m_header);
}

unsigned int CZRB_WinBitmapData::GetPaletteDepth(SInfoHeader& header) {
    return PaletteEntries(header);
}

unsigned int CZRB_WinBitmapData::PaletteEntries(const SInfoHeader& header) {
    if (header.biClrUsed != 0) {
        return header.biClrUsed & 0xFFFFU;
    }
    switch (header.biBitCount) {
    case 1:
        return 2;
    case 4:
        return 16;
    case 8:
        return 256;
    default:
        return 0;
    }
}

bool CZRB_WinBitmapData::HasPalette(const SInfoHeader& header) {
    return PaletteEntries(header) != 0;
}

unsigned int CZRB_WinBitmapData::GetPaletteEntry(unsigned int index) {
    return index < m_palette.GetLength() ? m_palette[index] : 0;
}

unsigned int CZRB_WinBitmapData::StoredRow(unsigned int y) const {
    if (m_header.biHeight >= 1) {
        return static_cast<unsigned int>(m_header.biHeight) - y - 1;
    }
    return y;
}

bool CZRB_WinBitmapData::IsOutside(unsigned int x, unsigned int y) const {
    return static_cast<int>(y) >= m_header.biHeight || static_cast<int>(x) >= m_header.biWidth;
}

unsigned int CZRB_WinBitmapData::GetPixelColorIndex(unsigned int x, unsigned int y,
                                                    unsigned int& index) {
    if (!HasPalette(m_header)) {
        return kResultWrongHeaderOrNoPalette;
    }
    if (IsOutside(x, y)) {
        return kResultBadCoordinates;
    }
    return GetPixelColorIndexNoCheck(x, y, index);
}

unsigned int CZRB_WinBitmapData::GetPixelColorIndexNoCheck(unsigned int x, unsigned int y,
                                                           unsigned int& index) {
    const unsigned int rowStart = m_rowStride * StoredRow(y);
    if (m_header.biBitCount == 8) {
        index = m_pixels[rowStart + x];
        return 0;
    }
    if (m_header.biBitCount == 1) {
        const unsigned char byte = m_pixels[rowStart + x / 8];
        index = (byte >> (7 - x % 8)) & 1U;
        return 0;
    }
    return kResultUnsupportedDepth;
}

unsigned int CZRB_WinBitmapData::GetPixelColor(unsigned int x, unsigned int y,
                                               ZRB::t_WinRgbQuad& colour) {
    if (IsOutside(x, y)) {
        return kResultBadCoordinates;
    }
    if (m_header.biSize != kShortHeaderSize) {
        return kResultWrongHeaderOrNoPalette;
    }
    if (!HasPalette(m_header)) {
        if (m_header.biBitCount != 24) {
            return kResultUnsupportedDepth;
        }
        const unsigned int offset = 3 * x + (m_rowStride * StoredRow(y) + m_colorCount) * 4;
        const unsigned __int64 size = m_pixels.GetLength();
        if (offset >= size) {
            return kResultBadCoordinates;
        }
        if (offset + 2ULL >= size) {
            throw CZRB_Exception(5, &m_pixels, 0);
        }
        colour.Blue = m_pixels[offset];
        colour.Green = m_pixels[offset + 1];
        colour.Red = m_pixels[offset + 2];
        colour.Reserved = 0;
        return 0;
    }
    unsigned int index = 0;
    const unsigned int result = GetPixelColorIndexNoCheck(x, y, index);
    if (result != 0) {
        return result;
    }
    const unsigned int entry = m_palette[index];
    colour.Red = static_cast<unsigned short>((entry >> 16) & 0xFFU);
    colour.Green = static_cast<unsigned short>((entry >> 8) & 0xFFU);
    colour.Blue = static_cast<unsigned short>(entry & 0xFFU);
    colour.Reserved = static_cast<unsigned short>(entry >> 24);
    return 0;
}
