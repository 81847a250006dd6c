// zrb bmp: what CZRB_BitmapDecoder makes of a BMP file, in words.
#ifndef ZRB_TOOL_BMPDECODERVIEW_H
#define ZRB_TOOL_BMPDECODERVIEW_H

#include "CZRB_BitmapDecoder.h"

#include <string>

namespace zrb {

// "none", "RLE, 8 bits", ...: the name of an info header's compression value.
const char* CompressionName(unsigned int compression);

// Why the decoder answered `result` (non-zero) for the file at `path`, told from the headers
// it read before it stopped.
std::string DecodeProblem(unsigned int result, const CZRB_BitmapDecoder& decoder,
                          const std::string& path);

// The "decoder" line of bmp info and, for a decoded image, its "masks" and "alpha" lines.
void PrintDecoderView(unsigned int result, const CZRB_BitmapDecoder& decoder,
                      const std::string& path);

} // namespace zrb

#endif
