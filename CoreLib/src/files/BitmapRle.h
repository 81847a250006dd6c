// Run-length encoded BMP pixel data: RLE8 for 8-bit and RLE4 for 4-bit palette images.
#ifndef LZRB_BITMAP_RLE_H
#define LZRB_BITMAP_RLE_H

#include "BitmapHeaders.h"
#include "BitmapUnpack.h"

namespace ZRB_Bitmap {

// Decodes the `size` bytes of run-length data at `data` for the image of `layout` into `out`
// (width * height RGBA pixels, top row first, already holding palette entry 0 everywhere);
// with `out` null it only walks the data. Codes are pairs: a count and a value (RLE8 one
// index, RLE4 two indexes that alternate, high nibble first), or 0 and an escape: 0 end of
// line, 1 end of bitmap, 2 a delta of two unsigned bytes (right, down), 3..255 that many
// indexes stored as they are, padded to an even number of bytes. Runs are cut at the row end;
// decoding stops at the end of bitmap or below the last row. Returns 0, or
// CZRB_BitmapDecoder::RESULT_TRUNCATED when the data ends inside a code or above the last row
// without an end of bitmap.
unsigned int DecodeRle(const unsigned char* data, unsigned int size, const t_Layout& layout,
                       const t_Palette& palette, unsigned char* out);

} // namespace ZRB_Bitmap

#endif
