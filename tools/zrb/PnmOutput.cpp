#include "PnmOutput.h"

#include "Common.h"

#include "CZRB_BitmapDecoder.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <vector>

namespace zrb {
namespace {

bool WriteBytes(std::FILE* out, const void* bytes, std::size_t size) {
    return std::fwrite(bytes, 1, size, out) == size;
}

// Writes header and pixels; false (errno telling why) as soon as a write fails.
bool WriteImage(std::FILE* out, const CZRB_BitmapDecoder& decoder) {
    const unsigned int width = decoder.GetWidth();
    const unsigned int height = decoder.GetHeight();
    const bool alpha = decoder.HasAlpha() != 0;
    char header[128];
    const int headerLength =
        alpha ? std::snprintf(header, sizeof header,
                              "P7\nWIDTH %u\nHEIGHT %u\nDEPTH 4\nMAXVAL 255\n"
                              "TUPLTYPE RGB_ALPHA\nENDHDR\n",
                              width, height)
              : std::snprintf(header, sizeof header, "P6\n%u %u\n255\n", width, height);
    if (!WriteBytes(out, header, static_cast<std::size_t>(headerLength))) {
        return false;
    }
    const unsigned char* rgba = decoder.GetPixels().GetBuf();
    const std::size_t rowBytes = 4 * static_cast<std::size_t>(width);
    if (alpha) {
        return WriteBytes(out, rgba, rowBytes * height);
    }
    std::vector<unsigned char> row(3 * static_cast<std::size_t>(width));
    for (unsigned int y = 0; y < height; ++y, rgba += rowBytes) {
        for (unsigned int x = 0; x < width; ++x) {
            std::memcpy(&row[3 * x], rgba + 4 * x, 3);
        }
        if (!WriteBytes(out, row.data(), row.size())) {
            return false;
        }
    }
    return true;
}

} // namespace

void WritePnm(const CZRB_BitmapDecoder& decoder, const std::string& path) {
    const bool toStdout = path == "-";
    std::FILE* out = toStdout ? stdout : std::fopen(path.c_str(), "wb");
    if (out == nullptr) {
        throw ToolError(path + ": cannot be created: " + std::strerror(errno));
    }
    errno = 0;
    const bool written = WriteImage(out, decoder);
    int error = errno;
    // Buffered bytes reach the system only here: a full disk may show up no earlier.
    const bool finished =
        toStdout ? std::fflush(out) == 0 && std::ferror(out) == 0 : std::fclose(out) == 0;
    if (written && !finished) {
        error = errno;
    }
    if (!written || !finished) {
        if (toStdout) {
            // Reported here, once: the final check of standard output must not repeat it.
            std::clearerr(stdout);
        }
        const std::string name = toStdout ? "standard output" : path;
        throw ToolError(name + ": cannot be written: " + std::strerror(error != 0 ? error : EIO));
    }
}

} // namespace zrb
