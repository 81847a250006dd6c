// Bitmap files from outside: the header reader and the loader answer every file with one of
// their codes, allocate nothing the file only announces, and wherever they answer, agree with
// the bytes of the file (header fields, palette entries, pixel bytes of 1-, 8- and 24-bit rows).
#include "CZRB_WinBitmapData.h"
#include "FuzzSupport.h"

namespace {

using SInfoHeader = CZRB_WinBitmapData::SInfoHeader;

unsigned int Le32(const std::uint8_t* bytes) {
    return bytes[0] | bytes[1] << 8 | bytes[2] << 16 | static_cast<unsigned int>(bytes[3]) << 24;
}

bool SameHeader(const SInfoHeader& a, const SInfoHeader& b) {
    return a.biSize == b.biSize && a.biWidth == b.biWidth && a.biHeight == b.biHeight &&
           a.biPlanes == b.biPlanes && a.biBitCount == b.biBitCount &&
           a.biCompression == b.biCompression && a.biSizeImage == b.biSizeImage &&
           a.biXPelsPerMeter == b.biXPelsPerMeter && a.biYPelsPerMeter == b.biYPelsPerMeter &&
           a.biClrUsed == b.biClrUsed && a.biClrImportant == b.biClrImportant;
}

// The header fields as they lie in a file of at least 54 bytes (image size as stored).
void CheckHeaderBytes(const std::uint8_t* data, const SInfoHeader& header, unsigned int offset) {
    FUZZ_CHECK(data[0] == 'B' && data[1] == 'M' && offset == Le32(data + 10));
    FUZZ_CHECK(header.biSize == Le32(data + 14));
    FUZZ_CHECK(header.biWidth == static_cast<int>(Le32(data + 18)));
    FUZZ_CHECK(header.biHeight == static_cast<int>(Le32(data + 22)));
    FUZZ_CHECK(header.biBitCount == (data[28] | data[29] << 8));
    const unsigned int storedSize = Le32(data + 34);
    FUZZ_CHECK(storedSize == 0 || header.biSizeImage == storedSize);
    FUZZ_CHECK(header.biClrUsed == Le32(data + 46) && header.biClrImportant == Le32(data + 50));
}

// The file that was loaded and what its headers announce.
struct Loaded {
    const std::uint8_t* data;
    std::size_t size;
    SInfoHeader header;
    unsigned int offset;
    bool palette;
};

// The file byte holding pixel (x, y) for the 40-byte header with a small positive size, or -1.
long ExpectedPixelByte(const Loaded& file, unsigned int x, unsigned int y) {
    const SInfoHeader& header = file.header;
    const long width = header.biWidth, height = header.biHeight;
    if (header.biSize != 40 || width <= 0 || height <= 0 || width > 65535 || height > 65535) {
        return -1;
    }
    const long stride = (header.biBitCount * width + 31) / 32 * 4;
    const long byteInRow = header.biBitCount == 1 ? x / 8 : x * header.biBitCount / 8;
    const unsigned long at = file.offset + stride * (height - 1 - static_cast<long>(y)) + byteInRow;
    return at < file.size ? file.data[at] : -1;
}

void CheckPixel(CZRB_WinBitmapData& bitmap, const Loaded& file, unsigned int x, unsigned int y) {
    const SInfoHeader& header = file.header;
    ZRB::t_WinRgbQuad colour{};
    unsigned int colourResult = 0;
    const unsigned int colourThrown =
        ThrownCode([&] { colourResult = bitmap.GetPixelColor(x, y, colour); });
    FUZZ_CHECK(colourThrown == 0 || colourThrown == 5);
    FUZZ_CHECK(colourResult == 0 || colourResult == 3 || colourResult == 8 || colourResult == 10);

    unsigned int index = 0, indexResult = 0;
    const unsigned int indexThrown =
        ThrownCode([&] { indexResult = bitmap.GetPixelColorIndex(x, y, index); });
    FUZZ_CHECK(indexThrown == 0 || indexThrown == 5);
    FUZZ_CHECK(indexResult == 0 || indexResult == 3 || indexResult == 8 || indexResult == 10);

    const bool inside =
        static_cast<int>(x) < header.biWidth && static_cast<int>(y) < header.biHeight;
    const long expected = inside ? ExpectedPixelByte(file, x, y) : -1;
    if (indexThrown == 0 && indexResult == 0) {
        FUZZ_CHECK(inside && file.palette);
        if (header.biBitCount == 1) {
            FUZZ_CHECK(expected < 0 || index == ((expected >> (7 - x % 8)) & 1U));
        } else {
            FUZZ_CHECK(header.biBitCount == 8 && index < 256);
            FUZZ_CHECK(expected < 0 || index == static_cast<unsigned long>(expected));
        }
    }
    if (colourThrown == 0 && colourResult == 0) {
        FUZZ_CHECK(inside && header.biSize == 40);
        FUZZ_CHECK(colour.Red < 256 && colour.Green < 256 && colour.Blue < 256 &&
                   colour.Reserved < 256);
        if (!file.palette) {
            FUZZ_CHECK(header.biBitCount == 24 && colour.Reserved == 0);
            FUZZ_CHECK(expected < 0 || colour.Blue == expected);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const CZRB_String& path = ScratchFile::Write(data, size);

    SInfoHeader header{};
    unsigned int offset = 0;
    const unsigned int infoResult = CZRB_WinBitmapData::ReadInfoFromFile(path, header, &offset);
    FUZZ_CHECK(infoResult == 0 || infoResult == 11);
    if (infoResult == 0) {
        FUZZ_CHECK(size >= 54);
        CheckHeaderBytes(data, header, offset);
    }

    CZRB_WinBitmapData bitmap;
    unsigned int loadResult = 0;
    const unsigned int loadThrown = ThrownCode([&] { loadResult = bitmap.LoadFromFile(path); });
    if (loadThrown != 0) {
        // Kept as shipped: an image size of 0 reaches the byte vector, which refuses it.
        FUZZ_CHECK(loadThrown == 9 && infoResult == 0 && header.biSizeImage == 0);
        return 0;
    }
    if (infoResult != 0) {
        FUZZ_CHECK(loadResult == infoResult);
        return 0;
    }
    const unsigned int entries = CZRB_WinBitmapData::GetPaletteDepth(header);
    const unsigned long long paletteEnd = entries == 0 ? 0 : 14ULL + header.biSize + 4ULL * entries;
    const unsigned long long pixelEnd =
        static_cast<unsigned long long>(offset) + header.biSizeImage;
    if (loadResult != 0) {
        FUZZ_CHECK(loadResult == 30 && (paletteEnd > size || pixelEnd > size));
        FUZZ_CHECK(bitmap.GetInfo()->biWidth == 0 && bitmap.GetPaletteEntry(0) == 0);
        return 0;
    }
    FUZZ_CHECK(paletteEnd <= size && pixelEnd <= size);
    FUZZ_CHECK(SameHeader(*bitmap.GetInfo(), header) && bitmap.GetPaletteDepth() == entries);
    for (unsigned int i = 0; i < entries; i += 1 + i / 4) {
        FUZZ_CHECK(bitmap.GetPaletteEntry(i) == Le32(data + 14 + header.biSize + 4 * i));
    }
    FUZZ_CHECK(bitmap.GetPaletteEntry(entries) == 0);

    // The corners, points chosen by the last bytes of the file, and a coordinate that is
    // negative when taken as signed.
    const Loaded file{data, size, header, offset, entries != 0};
    const unsigned int right = static_cast<unsigned int>(header.biWidth) - 1;
    const unsigned int top = static_cast<unsigned int>(header.biHeight) - 1;
    CheckPixel(bitmap, file, 0, 0);
    CheckPixel(bitmap, file, right, top);
    CheckPixel(bitmap, file, right, 0);
    CheckPixel(bitmap, file, 0, top);
    for (std::size_t at = size - 8; at + 2 <= size; at += 2) {
        CheckPixel(bitmap, file, data[at] % 64, data[at + 1] % 64);
    }
    CheckPixel(bitmap, file, 0x80000000U, 0);

    CZRB_WinBitmapData copy(bitmap);
    FUZZ_CHECK(SameHeader(*copy.GetInfo(), header));
    CheckPixel(copy, file, 0, 0);
    return 0;
}
