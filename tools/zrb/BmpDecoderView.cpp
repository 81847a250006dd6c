#include "BmpDecoderView.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace zrb {
namespace {

using Decoder = CZRB_BitmapDecoder;

// Rows of the image, whichever order they are stored in.
unsigned int RowCount(int height) {
    // Negated in unsigned arithmetic: the most negative height is 2^31 rows.
    return height < 0 ? 0U - static_cast<unsigned int>(height) : static_cast<unsigned int>(height);
}

// A mask the decoder takes: empty, or one run of set bits inside a pixel of `bitCount` bits.
bool IsUsableMask(unsigned int mask, unsigned int bitCount) {
    const unsigned int lowest = mask & (0U - mask);
    const bool oneRun = ((mask + lowest) & mask) == 0;
    return oneRun && (bitCount >= 32 || mask >> bitCount == 0);
}

std::string Hex(unsigned int value, unsigned int digits) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%0*x", static_cast<int>(digits), value);
    return text;
}

bool StartsWithBm(const std::string& path) {
    char start[2] = {};
    std::ifstream(path, std::ios::binary).read(start, 2);
    return start[0] == 'B' && start[1] == 'M';
}

std::string NotBitmap(const Decoder::t_Header& h, const std::string& path) {
    if (!StartsWithBm(path)) {
        return "not a BMP file: it does not start with \"BM\"";
    }
    const unsigned int known[] = {12, 40, 52, 56, 108, 124};
    if (std::find(std::begin(known), std::end(known), h.headerSize) == std::end(known)) {
        return "not a BMP file: unknown info header of " + std::to_string(h.headerSize) +
               " bytes (12, 40, 52, 56, 108 or 124 expected)";
    }
    return "not a BMP file: a width of " + std::to_string(h.width) + " and a height of " +
           std::to_string(h.height) + " hold no pixels";
}

std::string Corrupt(const Decoder::t_Header& h) {
    const unsigned int masks[] = {h.redMask, h.greenMask, h.blueMask, h.alphaMask};
    const char* const names[] = {"red", "green", "blue", "alpha"};
    for (int i = 0; i < 4; ++i) {
        if (!IsUsableMask(masks[i], h.bitCount)) {
            return std::string("corrupt: the ") + names[i] + " mask " + Hex(masks[i], 8) +
                   " is not one run of bits inside a " + std::to_string(h.bitCount) + "-bit pixel";
        }
    }
    return "corrupt: the pixel data starts at offset " + std::to_string(h.dataOffset) +
           ", inside the headers";
}

} // namespace

const char* CompressionName(unsigned int compression) {
    static const char* const kNames[] = {"none", "RLE, 8 bits", "RLE, 4 bits",     "bit fields",
                                         "JPEG", "PNG",         "alpha bit fields"};
    return compression < 7 ? kNames[compression] : "unknown";
}

std::string DecodeProblem(unsigned int result, const CZRB_BitmapDecoder& decoder,
                          const std::string& path) {
    const Decoder::t_Header& h = decoder.GetHeader();
    switch (result) {
    case Decoder::RESULT_CANNOT_OPEN:
        return "cannot be opened";
    case Decoder::RESULT_UNSUPPORTED:
        return "unsupported depth or compression: " + std::to_string(h.bitCount) +
               " bits per pixel with compression " + std::to_string(h.compression) + " (" +
               CompressionName(h.compression) + ") are not decoded";
    case Decoder::RESULT_NOT_BITMAP:
        return NotBitmap(h, path);
    case Decoder::RESULT_EMBEDDED_JPEG:
        return "the bitmap holds an embedded JPEG image, which is not decoded here";
    case Decoder::RESULT_EMBEDDED_PNG:
        return "the bitmap holds an embedded PNG image, which is not decoded here";
    case Decoder::RESULT_TOO_LARGE:
        return std::to_string(h.width) + " x " + std::to_string(RowCount(h.height)) +
               " pixels are above the pixel limit of " + std::to_string(decoder.GetPixelLimit()) +
               " (--max-pixels sets it)";
    case Decoder::RESULT_CORRUPT:
        return Corrupt(h);
    case Decoder::RESULT_TRUNCATED: {
        std::error_code error;
        const auto length = std::filesystem::file_size(path, error);
        return "truncated: the file" +
               (error ? std::string() : " (" + std::to_string(length) + " bytes)") +
               " is shorter than its headers, colour table, masks or pixel data announce";
    }
    default:
        return "not decoded (result " + std::to_string(result) + ")";
    }
}

void PrintDecoderView(unsigned int result, const CZRB_BitmapDecoder& decoder,
                      const std::string& path) {
    if (result != 0) {
        std::printf("decoder        no: %s\n", DecodeProblem(result, decoder, path).c_str());
        return;
    }
    const Decoder::t_Header& h = decoder.GetHeader();
    std::printf("decoder        yes: %u x %u pixels, rows stored %s\n", decoder.GetWidth(),
                decoder.GetHeight(), h.height < 0 ? "top-down" : "bottom-up");
    if (h.bitCount <= 8) {
        std::printf("masks          none: a palette of %u entries\n", h.paletteEntries);
    } else {
        const unsigned int digits = h.bitCount / 4;
        std::printf("masks          red %s, green %s, blue %s, alpha %s\n",
                    Hex(h.redMask, digits).c_str(), Hex(h.greenMask, digits).c_str(),
                    Hex(h.blueMask, digits).c_str(), Hex(h.alphaMask, digits).c_str());
    }
    std::printf("alpha          %s\n", decoder.HasAlpha() ? "yes" : "no");
}

} // namespace zrb
