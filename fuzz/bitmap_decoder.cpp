// libFuzzer target: CZRB_BitmapDecoder::LoadFromMemory on arbitrary bytes. Besides the
// sanitizers' own findings, a broken invariant of a load aborts the run.
#include "CZRB_BitmapDecoder.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

bool IsResultCode(unsigned int code) {
    switch (code) {
    case CZRB_BitmapDecoder::RESULT_UNSUPPORTED:
    case CZRB_BitmapDecoder::RESULT_NOT_BITMAP:
    case CZRB_BitmapDecoder::RESULT_EMBEDDED_JPEG:
    case CZRB_BitmapDecoder::RESULT_EMBEDDED_PNG:
    case CZRB_BitmapDecoder::RESULT_TOO_LARGE:
    case CZRB_BitmapDecoder::RESULT_CORRUPT:
    case CZRB_BitmapDecoder::RESULT_TRUNCATED:
        return true;
    default:
        return false;
    }
}

void CheckDecoded(const CZRB_BitmapDecoder& decoder) {
    const CZRB_BitmapDecoder::t_Header& header = decoder.GetHeader();
    const unsigned __int64 pixels =
        static_cast<unsigned __int64>(decoder.GetWidth()) * decoder.GetHeight();
    Require(pixels >= 1 && pixels <= decoder.GetPixelLimit());
    Require(decoder.GetPixels().GetLength() == 4 * pixels);
    Require(decoder.GetWidth() == static_cast<unsigned int>(header.width));
    const unsigned int height = static_cast<unsigned int>(header.height);
    Require(decoder.GetHeight() == (header.height < 0 ? 0U - height : height));
    const unsigned char* rgba = decoder.GetPixels().GetBuf();
    for (unsigned __int64 i = 0; !decoder.HasAlpha() && i < pixels; ++i) {
        Require(rgba[4 * i + 3] == 255);
    }
    const CZRB_BitmapDecoder copy(decoder);
    Require(std::memcmp(copy.GetPixels().GetBuf(), rgba, 4 * pixels) == 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    CZRB_BitmapDecoder decoder;
    decoder.SetPixelLimit(1U << 16); // keeps runs fast; nothing checked depends on it
    const unsigned int result = decoder.LoadFromMemory(data, size);
    if (result == 0) {
        CheckDecoded(decoder);
    } else {
        Require(IsResultCode(result));
        Require(decoder.GetWidth() == 0 && decoder.GetHeight() == 0);
        Require(decoder.GetPixels().GetLength() == 0);
    }
    return 0;
}
