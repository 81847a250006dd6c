#include "BitmapHeaders.h"

#include "BitmapUnpack.h"

namespace ZRB_Bitmap {

namespace {

typedef CZRB_BitmapDecoder Decoder;

const unsigned int kFileHeaderSize = 14;
const unsigned int kCoreHeaderSize = 12;
const unsigned int kInfoHeaderSize = 40;
const unsigned int kMasksOffset = kFileHeaderSize + kInfoHeaderSize;

bool IsKnownHeaderSize(unsigned int size) {
    switch (size) {
    case 12:
    case 40:
    case 52:
    case 56:
    case 108:
    case 124:
        return true;
    default:
        return false;
    }
}

// The info header fields behind the file header; `bytes` is the start of the file.
void ReadInfoFields(const unsigned char* bytes, Decoder::t_Header& header) {
    if (header.headerSize == kCoreHeaderSize) {
        header.width = Le16(bytes + 18);
        header.height = Le16(bytes + 20);
        header.planes = Le16(bytes + 22);
        header.bitCount = Le16(bytes + 24);
        return;
    }
    header.width = LeInt32(bytes + 18);
    header.height = LeInt32(bytes + 22);
    header.planes = Le16(bytes + 26);
    header.bitCount = Le16(bytes + 28);
    header.compression = Le32(bytes + 30);
    header.imageSize = Le32(bytes + 34);
    header.xPelsPerMeter = LeInt32(bytes + 38);
    header.yPelsPerMeter = LeInt32(bytes + 42);
    header.colorsUsed = Le32(bytes + 46);
    header.colorsImportant = Le32(bytes + 50);
}

bool IsDecodedFormat(unsigned int bitCount, unsigned int compression) {
    switch (bitCount) {
    case 1:
    case 2:
        return compression == Decoder::COMPRESSION_RGB;
    case 4:
        return compression == Decoder::COMPRESSION_RGB || compression == Decoder::COMPRESSION_RLE4;
    case 8:
        return compression == Decoder::COMPRESSION_RGB || compression == Decoder::COMPRESSION_RLE8;
    case 16:
    case 24:
    case 32:
        return compression == Decoder::COMPRESSION_RGB ||
               compression == Decoder::COMPRESSION_BITFIELDS ||
               compression == Decoder::COMPRESSION_ALPHABITFIELDS;
    default:
        return false;
    }
}

// Masks of a direct-colour image. BITFIELDS masks sit right behind the 40 bytes of the
// classic info header: inside the larger headers (a 52-byte header holds red, green and
// blue, 56 bytes and more add alpha), behind a 40-byte header as 3 or 4 words of their own.
// Plain RGB ignores any masks of the header. Sets *masksEnd to the end of what was read.
unsigned int ReadMasks(const unsigned char* bytes, unsigned __int64 available,
                       Decoder::t_Header& header, t_Layout& layout, unsigned int* masksEnd) {
    unsigned int* masks = layout.masks;
    *masksEnd = kFileHeaderSize + header.headerSize;
    if (header.compression == Decoder::COMPRESSION_RGB) {
        const bool sixteen = header.bitCount == 16;
        masks[0] = sixteen ? 0x7C00U : 0xFF0000U;
        masks[1] = sixteen ? 0x03E0U : 0x00FF00U;
        masks[2] = sixteen ? 0x001FU : 0x0000FFU;
        masks[3] = 0;
    } else {
        const unsigned int inHeader = (header.headerSize - kInfoHeaderSize) / 4;
        const unsigned int needed =
            header.compression == Decoder::COMPRESSION_ALPHABITFIELDS ? 4 : 3;
        const unsigned int count = inHeader > needed ? (inHeader < 4 ? inHeader : 4) : needed;
        if (kMasksOffset + 4ULL * count > available) {
            return Decoder::RESULT_TRUNCATED;
        }
        for (unsigned int i = 0; i < 4; ++i) {
            masks[i] = i < count ? Le32(bytes + kMasksOffset + 4 * i) : 0;
        }
        if (kMasksOffset + 4 * count > *masksEnd) {
            *masksEnd = kMasksOffset + 4 * count;
        }
    }
    header.redMask = masks[0];
    header.greenMask = masks[1];
    header.blueMask = masks[2];
    header.alphaMask = masks[3];
    for (unsigned int i = 0; i < 4; ++i) {
        if (!IsUsableMask(masks[i], header.bitCount)) {
            return Decoder::RESULT_CORRUPT;
        }
    }
    return 0;
}

// The colour table of a palette image: colours used (2^bits when 0 or more than that), but
// no more entries than fit between the headers and the pixel data.
unsigned int LocatePalette(unsigned __int64 available, Decoder::t_Header& header,
                           t_Layout& layout) {
    const unsigned int depthEntries = 1U << header.bitCount;
    const bool core = header.headerSize == kCoreHeaderSize;
    unsigned int entries = header.colorsUsed;
    if (core || entries == 0 || entries > depthEntries) {
        entries = depthEntries;
    }
    layout.paletteOffset = kFileHeaderSize + header.headerSize;
    layout.paletteEntrySize = core ? 3 : 4;
    if (header.dataOffset >= layout.paletteOffset) {
        const unsigned int room =
            (header.dataOffset - layout.paletteOffset) / layout.paletteEntrySize;
        entries = room < entries ? room : entries;
    }
    layout.paletteEntries = entries;
    header.paletteEntries = entries;
    const unsigned __int64 end =
        layout.paletteOffset + static_cast<unsigned __int64>(entries) * layout.paletteEntrySize;
    return end > available ? Decoder::RESULT_TRUNCATED : 0;
}

// Size and row order of the image, and whether this decoder reads its format.
unsigned int CheckImage(const Decoder::t_Header& header, unsigned int pixelLimit,
                        t_Layout& layout) {
    if (header.compression == Decoder::COMPRESSION_JPEG) {
        return Decoder::RESULT_EMBEDDED_JPEG;
    }
    if (header.compression == Decoder::COMPRESSION_PNG) {
        return Decoder::RESULT_EMBEDDED_PNG;
    }
    if (header.width < 1 || header.height == 0) {
        return Decoder::RESULT_NOT_BITMAP;
    }
    if (!IsDecodedFormat(header.bitCount, header.compression)) {
        return Decoder::RESULT_UNSUPPORTED;
    }
    layout.width = static_cast<unsigned int>(header.width);
    layout.topDown = header.height < 0;
    // Negated in unsigned arithmetic: the most negative height is 2^31 rows.
    layout.height = layout.topDown ? 0U - static_cast<unsigned int>(header.height)
                                   : static_cast<unsigned int>(header.height);
    layout.bitCount = header.bitCount;
    layout.compression = header.compression;
    if (static_cast<unsigned __int64>(layout.width) * layout.height > pixelLimit) {
        return Decoder::RESULT_TOO_LARGE;
    }
    return 0;
}

// Where the pixel data is and how much of it there is; all of it must be inside the file.
// Uncompressed rows are padded to 4 bytes; compressed data is the announced image size, or
// the rest of the file when that size is 0.
unsigned int LocatePixelData(const Decoder::t_Header& header, unsigned __int64 fileLength,
                             t_Layout& layout) {
    layout.dataOffset = header.dataOffset;
    const bool compressed = header.compression == Decoder::COMPRESSION_RLE8 ||
                            header.compression == Decoder::COMPRESSION_RLE4;
    unsigned __int64 size = 0;
    if (!compressed) {
        // At most 4 bytes per pixel: below 2^32 for an image inside the pixel limit.
        const unsigned __int64 rowBits =
            static_cast<unsigned __int64>(layout.width) * layout.bitCount;
        layout.rowStride = static_cast<unsigned int>((rowBits + 31) / 32 * 4);
        size = static_cast<unsigned __int64>(layout.rowStride) * layout.height;
    } else if (header.imageSize != 0) {
        size = header.imageSize;
    } else if (layout.dataOffset <= fileLength) {
        size = fileLength - layout.dataOffset;
        size = size > 0xFFFFFFFFULL ? 0xFFFFFFFFULL : size;
    }
    if (layout.dataOffset + size > fileLength) {
        return Decoder::RESULT_TRUNCATED;
    }
    layout.dataSize = static_cast<unsigned int>(size);
    return 0;
}

} // namespace

unsigned int ReadHeaders(const unsigned char* prefix, unsigned __int64 prefixLength,
                         unsigned __int64 fileLength, unsigned int pixelLimit,
                         CZRB_BitmapDecoder::t_Header& header, t_Layout& layout) {
    header = Decoder::t_Header();
    layout = t_Layout();
    // Every byte looked at below is inside both the file and the prefix.
    const unsigned __int64 available = prefixLength < fileLength ? prefixLength : fileLength;
    if (prefix == nullptr || available < 2 || prefix[0] != 'B' || prefix[1] != 'M') {
        return Decoder::RESULT_NOT_BITMAP;
    }
    if (available < kFileHeaderSize + 4) {
        return Decoder::RESULT_TRUNCATED;
    }
    header.fileSize = Le32(prefix + 2);
    header.dataOffset = Le32(prefix + 10);
    header.headerSize = Le32(prefix + 14);
    if (!IsKnownHeaderSize(header.headerSize)) {
        return Decoder::RESULT_NOT_BITMAP;
    }
    if (kFileHeaderSize + header.headerSize > available) {
        return Decoder::RESULT_TRUNCATED;
    }
    ReadInfoFields(prefix, header);
    unsigned int result = CheckImage(header, pixelLimit, layout);
    if (result != 0) {
        return result;
    }
    unsigned int headersEnd = kFileHeaderSize + header.headerSize;
    if (layout.bitCount <= 8) {
        result = LocatePalette(available, header, layout);
    } else {
        result = ReadMasks(prefix, available, header, layout, &headersEnd);
    }
    if (result != 0) {
        return result;
    }
    if (header.dataOffset < headersEnd) {
        return Decoder::RESULT_CORRUPT;
    }
    return LocatePixelData(header, fileLength, layout);
}

} // namespace ZRB_Bitmap
