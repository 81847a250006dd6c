// zrb bmp: what a BMP file's header says, what CZRB_WinBitmapData answers about its pixels and
// what CZRB_BitmapDecoder makes of it; the decoded image as PAM or PPM.
#include "BmpDecoderView.h"
#include "Common.h"
#include "PnmOutput.h"

#include "CZRB_BitmapDecoder.h"
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
    std::string output = "-";
    std::string maxPixels; // empty: the decoder's default
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

// The file's headers and, when they load, its palette and pixels.
struct LoadedBitmap {
    Header header{};
    unsigned int dataOffset = 0;
    CZRB_WinBitmapData bitmap;
    std::string loadProblem; // empty when palette and pixels loaded
};

// Loads what the reader can; returns why it cannot read even the headers, or "".
std::string TryLoad(const std::string& path, LoadedBitmap& loaded) {
    const unsigned int result =
        CZRB_WinBitmapData::ReadInfoFromFile(path.c_str(), loaded.header, &loaded.dataOffset);
    if (result == 11) {
        return WhyNotBmp(path);
    }
    if (result != 0) {
        return "cannot be read";
    }
    try {
        const unsigned int load = loaded.bitmap.LoadFromFile(path.c_str());
        if (load != 0) {
            loaded.loadProblem = "the palette or pixel data is shorter than the header announces";
        }
    } catch (const CZRB_Exception&) {
        loaded.loadProblem = "the header announces no pixel data";
    }
    return "";
}

// As TryLoad, but throws ToolError when the file or its headers cannot be read.
void Load(const std::string& path, LoadedBitmap& loaded) {
    RequireReadableFile(path);
    const std::string problem = TryLoad(path, loaded);
    if (!problem.empty()) {
        throw ToolError(path + ": " + problem);
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

unsigned int PixelLimit(const BmpOptions& options) {
    if (options.maxPixels.empty()) {
        return CZRB_BitmapDecoder::DEFAULT_PIXEL_LIMIT;
    }
    return static_cast<unsigned int>(
        ParseUnsigned(options.maxPixels, "--max-pixels", CZRB_BitmapDecoder::MAX_PIXEL_LIMIT));
}

// The headers of a decoded image in the reader's form, for header forms only the decoder reads
// (an image size of 0 computed as the reader computes it).
Header AsInfoHeader(const CZRB_BitmapDecoder& decoder) {
    const CZRB_BitmapDecoder::t_Header& d = decoder.GetHeader();
    const unsigned long long rowBytes =
        (static_cast<unsigned long long>(d.bitCount) * decoder.GetWidth() + 31) / 32 * 4;
    const auto computedSize = static_cast<unsigned int>(rowBytes * decoder.GetHeight());
    return Header{d.headerSize,
                  d.width,
                  d.height,
                  d.planes,
                  d.bitCount,
                  d.compression,
                  d.imageSize != 0 ? d.imageSize : computedSize,
                  d.xPelsPerMeter,
                  d.yPelsPerMeter,
                  d.colorsUsed,
                  d.colorsImportant};
}

void PrintHeader(const Header& h, unsigned int dataOffset, unsigned int paletteEntries) {
    std::printf("header         %u-byte info header\n", h.biSize);
    std::printf("size           %d x %lld pixels, rows stored %s\n", h.biWidth,
                std::llabs(static_cast<long long>(h.biHeight)),
                h.biHeight < 0 ? "top-down" : "bottom-up");
    std::printf("depth          %u bits per pixel, %u plane(s)\n", h.biBitCount, h.biPlanes);
    std::printf("compression    %u (%s)\n", h.biCompression, CompressionName(h.biCompression));
    std::printf("palette        %u entries\n", paletteEntries);
    std::printf("pixel data     %u bytes at offset %u\n", h.biSizeImage, dataOffset);
    std::printf("resolution     %d x %d pixels per metre\n", h.biXPelsPerMeter, h.biYPelsPerMeter);
}

// The reader's answers to pixel queries; true when it loaded the pixels.
bool PrintReaderView(LoadedBitmap& loaded, const std::string& headerProblem) {
    if (!headerProblem.empty() || !loaded.loadProblem.empty()) {
        std::printf("pixel queries  none: %s\n",
                    headerProblem.empty()
                        ? loaded.loadProblem.c_str()
                        : ("the reader cannot read it: " + headerProblem).c_str());
        return false;
    }
    CZRB_WinBitmapData& bitmap = loaded.bitmap;
    const Header& h = loaded.header;
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
    return true;
}

// The header as the reader reads it (or, for header forms only the decoder knows, as the
// decoder does), the reader's pixel queries and the decoder's view. Fails only when neither
// can make use of the file.
int RunInfo(const BmpOptions& options) {
    const std::string& file = options.file;
    const unsigned int pixelLimit = PixelLimit(options);
    RequireReadableFile(file);
    LoadedBitmap loaded;
    const std::string headerProblem = TryLoad(file, loaded);
    CZRB_BitmapDecoder decoder;
    decoder.SetPixelLimit(pixelLimit);
    const unsigned int decoded = decoder.LoadFromFile(file.c_str());
    if (!headerProblem.empty() && decoded != 0) {
        throw ToolError(file + ": " + DecodeProblem(decoded, decoder, file));
    }
    std::printf("file           %s\n", file.c_str());
    if (headerProblem.empty()) {
        PrintHeader(loaded.header, loaded.dataOffset,
                    CZRB_WinBitmapData::GetPaletteDepth(loaded.header));
    } else {
        const CZRB_BitmapDecoder::t_Header& d = decoder.GetHeader();
        PrintHeader(AsInfoHeader(decoder), d.dataOffset, d.paletteEntries);
    }
    const bool readerLoaded = PrintReaderView(loaded, headerProblem);
    PrintDecoderView(decoded, decoder, file);
    return readerLoaded || decoded == 0 ? kExitOk : kExitBadInput;
}

// The image the decoder makes of the file, as PAM (with alpha) or PPM.
int RunToPnm(const BmpOptions& options) {
    const unsigned int pixelLimit = PixelLimit(options);
    RequireReadableFile(options.file);
    CZRB_BitmapDecoder decoder;
    decoder.SetPixelLimit(pixelLimit);
    const unsigned int result = decoder.LoadFromFile(options.file.c_str());
    if (result != 0) {
        throw ToolError(options.file + ": " + DecodeProblem(result, decoder, options.file));
    }
    WritePnm(decoder, options.output);
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

void AddPixelLimitOption(CLI::App& command, BmpOptions& options) {
    command
        .add_option("--max-pixels", options.maxPixels,
                    "Most pixels (width x height) the decoder accepts; default " +
                        std::to_string(CZRB_BitmapDecoder::DEFAULT_PIXEL_LIMIT))
        ->type_name("N");
}

} // namespace

void AddBmpCommand(CLI::App& app, CommandRun& run) {
    auto options = std::make_shared<BmpOptions>();
    CLI::App* command =
        app.add_subcommand("bmp", "Look inside a BMP file, or convert it to PAM or PPM.");
    command->require_subcommand(1);

    CLI::App* info = command->add_subcommand(
        "info", "Print what the header says, which pixel queries the reader answers and what "
                "the decoder makes of the file.");
    info->add_option("FILE", options->file, "The BMP file")->required();
    AddPixelLimitOption(*info, *options);
    info->callback([options, &run] { run = [options] { return RunInfo(*options); }; });

    CLI::App* pixel = command->add_subcommand(
        "pixel", "Print the colour of one pixel and, for palette images, its palette index.");
    pixel->add_option("FILE", options->file, "The BMP file")->required();
    pixel->add_option("X", options->x, "Column, 0 at the left")->required();
    pixel->add_option("Y", options->y, "Row, 0 at the top")->required();
    pixel->callback([options, &run] { run = [options] { return RunPixel(*options); }; });

    CLI::App* topnm = command->add_subcommand(
        "topnm", "Write the decoded image as PAM (with alpha) or binary PPM, for any viewer.");
    topnm->add_option("FILE", options->file, "The BMP file")->required();
    topnm
        ->add_option("-o,--output", options->output,
                     "Output file; - (the default) for standard output")
        ->type_name("OUT");
    AddPixelLimitOption(*topnm, *options);
    topnm->callback([options, &run] { run = [options] { return RunToPnm(*options); }; });
}

} // namespace zrb
