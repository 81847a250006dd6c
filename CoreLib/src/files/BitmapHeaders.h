// The layout of a BMP file as its headers describe it, checked against the file's real length:
// image size and row order, pixel format, where the colour table, masks and pixel data are.
#ifndef LZRB_BITMAP_HEADERS_H
#define LZRB_BITMAP_HEADERS_H

#include "CZRB_BitmapDecoder.h"
#include "ZRB.h"

namespace ZRB_Bitmap {

// Little-endian fields of the file, as every BMP stores them.
inline unsigned int Le32(const unsigned char* bytes) {
    return ZRB::Uint32FromBuf(bytes, ZRB::BYTE_ORDER_LITTLE_ENDIAN);
}
inline int LeInt32(const unsigned char* bytes) {
    return ZRB::Int32FromBuf(bytes, ZRB::BYTE_ORDER_LITTLE_ENDIAN);
}
inline unsigned short Le16(const unsigned char* bytes) {
    return ZRB::Uint16FromBuf(bytes, ZRB::BYTE_ORDER_LITTLE_ENDIAN);
}

// The bytes at the start of a file that hold everything ReadHeaders looks at: the file
// header, the largest info header and a full colour table (masks behind a 40-byte header
// take less room than a colour table).
constexpr unsigned int kPrefixBytes = 14 + 124 + 256 * 4;

struct t_Layout {
    unsigned int width;            // pixels, at least 1
    unsigned int height;           // pixels, at least 1
    bool topDown;                  // first stored row is the top row
    unsigned int bitCount;         // 1, 2, 4, 8, 16, 24 or 32
    unsigned int compression;      // COMPRESSION_RGB, _RLE8, _RLE4, _BITFIELDS, _ALPHABITFIELDS
    unsigned int paletteOffset;    // file offset of the first colour table entry
    unsigned int paletteEntries;   // entries to read (palette images), at most 256
    unsigned int paletteEntrySize; // 3 after a core header, else 4
    unsigned int masks[4];         // red, green, blue, alpha (direct colour)
    unsigned int dataOffset;       // file offset of the pixel data
    unsigned int dataSize;         // bytes of pixel data, all of them inside the file
    unsigned int rowStride;        // bytes per stored row (uncompressed data)
};

// Reads and checks the headers of a file of `fileLength` bytes whose first `prefixLength`
// bytes are at `prefix` (at least min(fileLength, kPrefixBytes) of them). Fills `header`
// (what the file says) and `layout`. Returns a CZRB_BitmapDecoder result code: 0, 8, 11, 12,
// 13, 14, 15 or 30; after a failure `header` holds what was read before it.
unsigned int ReadHeaders(const unsigned char* prefix, unsigned __int64 prefixLength,
                         unsigned __int64 fileLength, unsigned int pixelLimit,
                         CZRB_BitmapDecoder::t_Header& header, t_Layout& layout);

} // namespace ZRB_Bitmap

#endif
