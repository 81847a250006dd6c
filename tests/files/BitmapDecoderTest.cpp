#include "CZRB_BitmapDecoder.h"
#include "FileTestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <tuple>
#include <vector>

namespace {

namespace fs = std::filesystem;
typedef CZRB_BitmapDecoder Decoder;

const fs::path kSamples = fs::path(LZRB_TEST_DATA_DIR) / "bmp";

std::vector<fs::path> Samples() {
    std::vector<fs::path> samples;
    for (const auto& entry : fs::directory_iterator(kSamples)) {
        if (entry.path().extension() == ".bmp") {
            samples.push_back(entry.path());
        }
    }
    std::sort(samples.begin(), samples.end());
    return samples;
}

// The reference pixels next to a sample as RGBA: <name>.pam (with alpha) or <name>.ppm.
struct Reference {
    unsigned int width = 0, height = 0;
    bool alpha = false;
    std::string rgba;
};
bool ReadReference(const fs::path& sample, Reference& ref) {
    for (const char* extension : {".pam", ".ppm"}) {
        std::ifstream in(fs::path(sample).replace_extension(extension), std::ios::binary);
        std::string token;
        if (!(in >> token)) {
            continue;
        }
        ref.alpha = token == "P7";
        while (ref.alpha && in >> token && token != "ENDHDR") {
            if (token == "WIDTH" || token == "HEIGHT") {
                in >> (token == "WIDTH" ? ref.width : ref.height);
            }
        }
        if (!ref.alpha) {
            in >> ref.width >> ref.height >> token;
        }
        in.get();
        const std::string body(std::istreambuf_iterator<char>(in), {});
        const size_t channels = ref.alpha ? 4 : 3;
        for (size_t i = 0; i + channels <= body.size(); i += channels) {
            ref.rgba += body.substr(i, channels) + (ref.alpha ? "" : "\xFF");
        }
        return true;
    }
    return false;
}

std::string PixelsOf(const Decoder& decoder) {
    const CZRB_Uint8Vector& pixels = decoder.GetPixels();
    return std::string(pixels.GetBuf(), pixels.GetBuf() + pixels.GetLength());
}

void Patch(std::string& bytes, size_t offset, unsigned int value, int width) {
    std::string field;
    PutLe(field, value, width);
    bytes.replace(offset, field.size(), field);
}

// A 4 x 2 bitmap of RLE8 or RLE4 data with four colours; index 0 is grey.
const std::vector<unsigned int> kColours = {0x5A5A5A, 0xFF0000, 0x00FF00, 0x0000FF};
std::string RleBitmap(bool rle4, const std::string& stream) {
    std::string file =
        BmpFile{40, rle4 ? 4 : 8, {}, kColours, 4, unsigned(stream.size())}.Build() + stream;
    Patch(file, 18, 4, 4);            // width
    Patch(file, 22, 2, 4);            // height
    Patch(file, 30, rle4 ? 2 : 1, 4); // compression
    return file;
}

} // namespace

TEST(BitmapDecoderSamples, DecodeToTheirReferencePixels) {
    const std::map<std::string, unsigned int> refused = {
        {"hand_v3_jpeg.bmp", 12}, {"hand_v3_png.bmp", 13}, {"im_v3_16_nomasks.bmp", 15}};
    const std::vector<fs::path> samples = Samples();
    ASSERT_GE(samples.size(), 35U);
    for (const fs::path& sample : samples) {
        SCOPED_TRACE(sample.filename());
        const std::string file = Contents(sample);
        Decoder fromMemory, fromFile;
        const unsigned int code = fromMemory.LoadFromMemory(file.data(), file.size());
        EXPECT_EQ(fromFile.LoadFromFile(sample.c_str()), code);
        Reference ref;
        if (!ReadReference(sample, ref)) {
            const auto expected = refused.find(sample.filename().string());
            ASSERT_NE(expected, refused.end());
            EXPECT_EQ(code, expected->second);
            continue;
        }
        ASSERT_EQ(code, 0U);
        EXPECT_EQ(fromMemory.GetWidth(), ref.width);
        EXPECT_EQ(fromMemory.GetHeight(), ref.height);
        EXPECT_EQ(fromMemory.HasAlpha() != 0, ref.alpha);
        EXPECT_TRUE(PixelsOf(fromMemory) == ref.rgba);
        EXPECT_TRUE(PixelsOf(fromFile) == ref.rgba);
    }
}

TEST(BitmapDecoderSamples, EveryTruncationGivesACode) {
    for (const fs::path& sample : Samples()) {
        const std::string file = Contents(sample);
        std::vector<size_t> decoded; // lengths that gave 0 or left pixels behind
        Decoder decoder;
        for (size_t length = 0; length < file.size(); ++length) {
            if (decoder.LoadFromMemory(file.data(), length) == 0 || decoder.GetWidth() != 0 ||
                decoder.GetPixels().GetLength() != 0) {
                decoded.push_back(length);
            }
        }
        EXPECT_TRUE(decoded.empty()) << sample.filename() << " decoded at " << decoded.front();
    }
}

TEST(BitmapDecoder, HostileHeadersGiveTheirCodes) {
    const std::tuple<const char*, size_t, unsigned int, int, unsigned int> cases[] = {
        {"hand_v3_24_topdown.bmp", 0, 0x4142, 2, Decoder::RESULT_NOT_BITMAP}, // "BA"
        {"hand_v3_24_topdown.bmp", 14, 64, 4, Decoder::RESULT_NOT_BITMAP},
        {"hand_v3_24_topdown.bmp", 18, 0, 4, Decoder::RESULT_NOT_BITMAP},
        {"hand_v3_24_topdown.bmp", 22, 0, 4, Decoder::RESULT_NOT_BITMAP},
        {"hand_v3_24_topdown.bmp", 18, 0x7FFFFFFF, 4, Decoder::RESULT_TOO_LARGE},
        {"hand_v3_24_topdown.bmp", 22, 0x80000000, 4, Decoder::RESULT_TOO_LARGE},
        {"hand_v3_24_topdown.bmp", 28, 64, 2, Decoder::RESULT_UNSUPPORTED},
        {"hand_v3_24_topdown.bmp", 30, 7, 4, Decoder::RESULT_UNSUPPORTED},
        {"hand_v3_24_topdown.bmp", 10, 20, 4, Decoder::RESULT_CORRUPT},
        {"hand_v3_24_topdown.bmp", 10, 0xFFFFFFF0, 4, Decoder::RESULT_TRUNCATED},
        {"im_v5_8.bmp", 30, Decoder::COMPRESSION_RLE4, 4, Decoder::RESULT_UNSUPPORTED},
        {"im_v5_8.bmp", 30, Decoder::COMPRESSION_BITFIELDS, 4, Decoder::RESULT_UNSUPPORTED},
        {"im_v5_8.bmp", 46, 0xFFFFFFFF, 4, 0}, // colours used beyond 8 bits: 256 of them
        {"im_v5_565.bmp", 54, 0xF801, 4, Decoder::RESULT_CORRUPT},  // not contiguous
        {"im_v5_565.bmp", 54, 0x1F800, 4, Decoder::RESULT_CORRUPT}, // beyond 16 bits
        {"hand_v3_rle8.bmp", 34, 0x7FFFFFFF, 4, Decoder::RESULT_TRUNCATED},
    };
    for (const auto& [name, offset, value, width, expected] : cases) {
        std::string file = Contents(kSamples / name);
        Patch(file, offset, value, width);
        Decoder decoder;
        EXPECT_EQ(decoder.LoadFromMemory(file.data(), file.size()), expected)
            << name << " with " << value << " at " << offset;
    }
}

TEST(BitmapDecoder, RunsAreCutAtTheRowAndTheImage) {
    // Indexes of the 4 x 2 image, top row first.
    const std::tuple<bool, std::string, unsigned int, std::vector<int>> cases[] = {
        {false, {3, 1, 5, 2, 0, 0, 0, 1}, 0, {0, 0, 0, 0, 1, 1, 1, 2}},
        {false, {0, 6, 1, 2, 3, 1, 2, 3, 0, 1}, 0, {0, 0, 0, 0, 1, 2, 3, 1}},
        {false, {1, 1, 0, 2, 1, 5, 2, 2}, 0, {0, 0, 0, 0, 1, 0, 0, 0}}, // delta below the image
        {false, {4, 1, 0, 0, 4, 2, 0, 0}, 0, {2, 2, 2, 2, 1, 1, 1, 1}}, // no end of bitmap
        {false, {4, 1, 0, 0}, Decoder::RESULT_TRUNCATED, {}},           // ends above the top row
        {false, {0, 4, 1, 2}, Decoder::RESULT_TRUNCATED, {}},
        {false, {0, 2, 1}, Decoder::RESULT_TRUNCATED, {}},
        {true, {5, 0x12, 0, 0, 0, 3, 0x31, 0x20, 0, 1}, 0, {3, 1, 2, 0, 1, 2, 1, 2}},
    };
    for (const auto& [rle4, stream, code, indexes] : cases) {
        const std::string file = RleBitmap(rle4, stream);
        Decoder decoder;
        ASSERT_EQ(decoder.LoadFromMemory(file.data(), file.size()), code);
        std::string expected;
        for (int index : indexes) {
            const unsigned int c = kColours[index];
            expected += {char(c >> 16), char(c >> 8), char(c), '\xFF'};
        }
        EXPECT_TRUE(PixelsOf(decoder) == expected) << testing::PrintToString(stream);
    }
}

TEST(BitmapDecoder, LimitCopiesAndSinglePixels) {
    const std::string file = Contents(kSamples / "im_v5_32a.bmp"); // 13 x 9 with alpha
    Decoder decoder;
    EXPECT_EQ(decoder.SetPixelLimit(116).LoadFromMemory(file.data(), file.size()),
              Decoder::RESULT_TOO_LARGE);
    EXPECT_EQ(decoder.SetPixelLimit(117).LoadFromMemory(file.data(), file.size()), 0U);
    EXPECT_EQ(Decoder().SetPixelLimit(0xFFFFFFFF).GetPixelLimit(), Decoder::MAX_PIXEL_LIMIT);

    Decoder copy(decoder);
    EXPECT_TRUE(PixelsOf(copy) == PixelsOf(decoder));
    EXPECT_EQ(copy.GetPixelLimit(), 117U);
    ZRB::t_WinRgbQuad colour = {};
    const std::string last = file.substr(file.size() - 4); // bottom-up: the last pixel is (12, 0)
    ASSERT_EQ(copy.GetPixelColor(12, 0, colour), 0U);
    EXPECT_EQ(std::string(
                  {char(colour.Blue), char(colour.Green), char(colour.Red), char(colour.Reserved)}),
              last);
    EXPECT_EQ(copy.GetPixelColor(13, 0, colour), 3U);
    EXPECT_EQ(copy.GetPixelColor(0, 9, colour), 3U);

    decoder.Destroy();
    EXPECT_EQ(decoder.GetWidth() + decoder.GetPixels().GetLength(), 0U);
    EXPECT_EQ(copy.GetWidth(), 13U);
    decoder = copy;
    EXPECT_TRUE(PixelsOf(copy) == PixelsOf(decoder));

    // A failed load keeps what the headers said; a missing file cannot be opened.
    EXPECT_EQ(decoder.LoadFromFile((kSamples / "hand_v3_jpeg.bmp").c_str()), 12U);
    EXPECT_EQ(decoder.GetHeader().compression, Decoder::COMPRESSION_JPEG);
    EXPECT_EQ(decoder.GetHeader().width, 8);
    EXPECT_EQ(decoder.GetWidth(), 0U);
    EXPECT_EQ(decoder.LoadFromFile((kSamples / "missing.bmp").c_str()), 1U);
    EXPECT_EQ(decoder.LoadFromMemory(nullptr, 10), Decoder::RESULT_NOT_BITMAP);
}
