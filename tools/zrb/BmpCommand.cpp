// zrb bmp: what a BMP file's header says and what CZRB_WinBitmapData answers about its pixels.
#include "Common.h"

#include "CZRB_Exception.h"
#include "CZRB_WinBitmapData.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>

namespace zrb {
namespace {

using Header = CZRB_WinBitmapData::SInfoHeader;

struct BmpOptions {
    std::string file;
    std::string x, y;
};

// Why the reader calls a file unreadable (result 11), from the file's own first bytes.
std::string WhyNotBmp(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    unsigned char start[18] = {};
    in.read(reinterpret_cast<char*>(start), sizeof start);
    std::error_code error;
    const auto length = static_cast<long long>(std::filesystem::file_size(path, error));
    const unsigned int headerSize =
        start[14] | start[15] << 8 | start[16] << 16 | static_cast<unsigned int>(start[17]) << 24;
    if (length >= 2 && (start[0] != 'B' || start[1] != 'M')) {
        return "not a BMP file: it does not start with \"BM\"";
    }
    if (length >= 18 && headerSize != 40 && headerSize != 108 && headerSize != 124) {
        return "unknown info header of " + std::to_string(headerSize) +
               " bytes (40, 108 or 124 expected)";
    }
    return "too short for a BMP file (" + std::to_string(length) + " bytes, 54 at least)";
}

// The file's headers and, when they load, its palette and pixels. Throws ToolError when not
// even the headers can be read.
struct LoadedBitmap {
    Header header{};
    unsigned int dataOffset = 0;
    CZRB_WinBitmapData bitmap;
    std::string loadProblem; // empty when palette and pixels loaded
};

void Load(const std::string& path, LoadedBitmap& loaded) {
    RequireReadableFile(path);
    const unsigned int result =
        CZRB_WinBitmapData::ReadInfoFromFile(path.c_str(), loaded.header, &loaded.dataOffset);
    if (result == 11) {
        throw ToolError(path + ": " + WhyNotBmp(path));
    }
    if (result != 0) {
        throw ToolError(path + ": cannot be read");
    }
    try {
        const unsigned int load = loaded.bitmap.LoadFromFile(path.c_str());
        if (load != 0) {
            loaded.loadProblem = "the palette or pixel data is shorter than the header announces";
        }
    } catch (const CZRB_Exception&) {
        loaded.loadProblem = "the header announces no pixel data";
    }
}

// Why a pixel query answered `result` (or threw); empty for an answer.
std::string Reason(unsigned int result, const Header& header, bool colourQuery) {
    switch (result) {
    case 0:
        return "";
    case 8:
        return "the reader does not decode " + std::to_string(header.biBitCount) +
               "-bit pixels (only 1- and 8-bit palette and 24-bit colour images)";
    case 10:
        return colourQuery ? "the reader gives colours only with the 40-byte info header"
                           : "the image has no palette";
    case 3:
        return header.biHeight < 0 ? "the reader does not address top-down images (negative "
                                     "height)"
                                   : "the pixel lies beyond the pixel data";
    default:
        return "the pixel or palette data is shorter than the image needs";
    }
}

// The result of a pixel query, with the library's exception for data that is too short
// folded into a result of its own.
template <class Query>
unsigned int Ask(Query query) {
    try {
        return query();
    } catch (const CZRB_Exception&) {
        return 5;
    }
}

const char* CompressionName(unsigned int compression) {
    static const char* const kNames[] = {"none", "RLE, 8 bits", "RLE, 4 bits",     "bit fields",
                                         "JPEG", "PNG",         "alpha bit fields"};
    return compression < 7 ? kNames[compression] : "unknown";
}

int RunInfo(const BmpOptions& options) {
    LoadedBitmap loaded;
    Load(options.file, loaded);
    Header& h = loaded.header;
    const unsigned int paletteEntries = CZRB_WinBitmapData::GetPaletteDepth(h);
    std::printf("file           %s\n", options.file.c_str());
    std::printf("header         %u-byte info header\n", h.biSize);
    std::printf("size           %d x %lld pixels, rows stored %s\n", h.biWidth,
                std::llabs(static_cast<long long>(h.biHeight)),
                h.biHeight < 0 ? "top-down" : "bottom-up");
    std::printf("depth          %u bits per pixel, %u plane(s)\n", h.biBitCount, h.biPlanes);
    std::printf("compression    %u (%s)\n", h.biCompression, CompressionName(h.biCompression));
    std::printf("palette        %u entries\n", paletteEntries);
    std::printf("pixel data     %u bytes at offset %u\n", h.biSizeImage, loaded.dataOffset);
    std::printf("resolution     %d x %d pixels per metre\n", h.biXPelsPerMeter, h.biYPelsPerMeter);
    if (!loaded.loadProblem.empty()) {
        std::printf("pixel queries  none: %s\n", loaded.loadProblem.c_str());
        return kExitBadInput;
    }
    CZRB_WinBitmapData& bitmap = loaded.bitmap;
    ZRB::t_WinRgbQuad colour{};
    unsigned int index = 0;
    const std::string colourReason =
        Reason(Ask([&] { return bitmap.GetPixelColor(0, 0, colour); }), h, true);
    const std::string indexReason =
        Reason(Ask([&] { return bitmap.GetPixelColorIndex(0, 0, index); }), h, false);
    std::printf("pixel colour   %s\n",
                colourReason.empty() ? "yes" : ("no: " + colourReason).c_str());
    std::printf("palette index  %s\n",
                indexReason.empty() ? "yes" : ("no: " + indexReason).c_str());
    return kExitOk;
}

int RunPixel(const BmpOptions& options) {
    const std::uint64_t x = ParseUnsigned(options.x, "X", 0x7FFFFFFF);
    const std::uint64_t y = ParseUnsigned(options.y, "Y", 0x7FFFFFFF);
    LoadedBitmap loaded;
    Load(options.file, loaded);
    if (!loaded.loadProblem.empty()) {
        throw ToolError(options.file + ": " + loaded.loadProblem);
    }
    const Header& h = loaded.header;
    if (h.biHeight >= 0 && (x >= static_cast<std::uint64_t>(std::max(h.biWidth, 0)) ||
                            y >= static_cast<std::uint64_t>(h.biHeight))) {
        throw ToolError("pixel (" + options.x + ", " + options.y + ") is outside the " +
                        std::to_string(h.biWidth) + " x " + std::to_string(h.biHeight) + " image");
    }
    const auto column = static_cast<unsigned int>(x);
    const auto row = static_cast<unsigned int>(y);
    ZRB::t_WinRgbQuad colour{};
    unsigned int index = 0;
    const unsigned int colourResult =
        Ask([&] { return loaded.bitmap.GetPixelColor(column, row, colour); });
    const bool hasPalette = CZRB_WinBitmapData::GetPaletteDepth(loaded.header) != 0;
    const unsigned int indexResult =
        hasPalette ? Ask([&] { return loaded.bitmap.GetPixelColorIndex(column, row, index); }) : 10;
    std::printf("(%u, %u)", column, row);
    if (colourResult == 0) {
        std::printf("  #%02x%02x%02x  rgb(%u, %u, %u)", colour.Red & 0xFF, colour.Green & 0xFF,
                    colour.Blue & 0xFF, colour.Red, colour.Green, colour.Blue);
    }
    if (indexResult == 0) {
        std::printf("  index %u", index);
    }
    std::printf("\n");
    if (colourResult != 0) {
        throw ToolError("no colour: " + Reason(colourResult, h, true));
    }
    return kExitOk;
}

} // namespace

void AddBmpCommand(CLI::App& app, CommandRun& run) {
    auto options = std::make_shared<BmpOptions>();
    CLI::App* command = app.add_subcommand("bmp", "Look inside a BMP file.");
    command->require_subcommand(1);

    CLI::App* info = command->add_subcommand(
        "info", "Print what the header says and which pixel queries the reader answers.");
    info->add_option("FILE", options->file, "The BMP file")->required();
    info->callback([options, &run] { run = [options] { return RunInfo(*options); }; });

    CLI::App* pixel = command->add_subcommand(
        "pixel", "Print the colour of one pixel and, for palette images, its palette index.");
    pixel->add_option("FILE", options->file, "The BMP file")->required();
    pixel->add_option("X", options->x, "Column, 0 at the left")->required();
    pixel->add_option("Y", options->y, "Row, 0 at the top")->required();
    pixel->callback([options, &run] { run = [options] { return RunPixel(*options); }; });
}

} // namespace zrb
