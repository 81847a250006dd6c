#include "CZRB_BitmapDecoder.h"

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
typedef std::vector<unsigned char> Bytes;
typedef CZRB_BitmapDecoder Decoder;

const fs::path kSamples = fs::path(LZRB_TEST_DATA_DIR) / "bmp";

Bytes ReadAll(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(in), {});
}

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
    Bytes rgba;
};
bool ReadReference(const fs::path& sample, Reference& ref) {
    for (const char* extension : {".pam", ".ppm"}) {
        std::ifstream in(fs::path(sample).replace_extension(extension), std::ios::binary);
        std::string token;
        if (!(in >> token)) {
            continue;
        }
        ref.alpha = token == "P7";
        if (ref.alpha) {
            while (in >> token && token != "ENDHDR") {
                if (token == "WIDTH" || token == "HEIGHT") {
                    in >> (token == "WIDTH" ? ref.width : ref.height);
                }
            }
        } else {
            in >> ref.width >> ref.height >> token;
        }
        in.get();
        const Bytes body(std::istreambuf_iterator<char>(in), {});
        const size_t channels = ref.alpha ? 4 : 3;
        for (size_t i = 0; i + channels <= body.size(); i += channels) {
            ref.rgba.insert(ref.rgba.end(), body.begin() + i, body.begin() + i + channels);
            if (!ref.alpha) {
                ref.rgba.push_back(255);
            }
        }
        return true;
    }
    return false;
}

Bytes PixelsOf(const Decoder& decoder) {
    const CZRB_Uint8Vector& pixels = decoder.GetPixels();
    return Bytes(pixels.GetBuf(), pixels.GetBuf() + pixels.GetLength());
}

void Patch(Bytes& bytes, size_t offset, unsigned int value, int width) {
    for (int i = 0; i < width; ++i) {
        bytes[offset + i] = static_cast<unsigned char>(value >> (8 * i));
    }
}

// A 4 x 2 bitmap of RLE8 or RLE4 data with four colours; index 0 is grey.
const unsigned char kColours[4][3] = {{90, 90, 90}, {255, 0, 0}, {0, 255, 0}, {0, 0, 255}};
Bytes RleBitmap(bool rle4, const Bytes& stream) {
    Bytes file(14 + 40 + 16, 0);
    file[0] = 'B';
    file[1] = 'M';
    Patch(file, 10, static_cast<unsigned int>(file.size()), 4);
    for (auto [offset, value, width] : {std::tuple<size_t, unsigned int, int>{14, 40, 4},
                                        {18, 4, 4},
                                        {22, 2, 4},
                                        {26, 1, 2},
                                        {28, rle4 ? 4 : 8, 2},
                                        {30, rle4 ? 2 : 1, 4},
                                        {34, static_cast<unsigned int>(stream.size()), 4},
                                        {46, 4, 4}}) {
        Patch(file, offset, value, width);
    }
    for (int i = 0; i < 4; ++i) {
        std::copy(std::rbegin(kColours[i]), std::rend(kColours[i]), file.begin() + 54 + 4 * i);
    }
    file.insert(file.end(), stream.begin(), stream.end());
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
        const Bytes file = ReadAll(sample);
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
        const Bytes file = ReadAll(sample);
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
        Bytes file = ReadAll(kSamples / name);
        Patch(file, offset, value, width);
        Decoder decoder;
        EXPECT_EQ(decoder.LoadFromMemory(file.data(), file.size()), expected)
            << name << " with " << value << " at " << offset;
    }
}

TEST(BitmapDecoder, RunsAreCutAtTheRowAndTheImage) {
    // Indexes of the 4 x 2 image, top row first.
    const std::tuple<bool, Bytes, unsigned int, Bytes> cases[] = {
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
        const Bytes file = RleBitmap(rle4, stream);
        Decoder decoder;
        ASSERT_EQ(decoder.LoadFromMemory(file.data(), file.size()), code);
        Bytes expected;
        for (unsigned char index : indexes) {
            expected.insert(expected.end(), kColours[index], kColours[index] + 3);
            expected.push_back(255);
        }
        EXPECT_TRUE(PixelsOf(decoder) == expected) << testing::PrintToString(stream);
    }
}

TEST(BitmapDecoder, LimitCopiesAndSinglePixels) {
    const Bytes file = ReadAll(kSamples / "im_v5_32a.bmp"); // 13 x 9 with alpha
    Decoder decoder;
    EXPECT_EQ(decoder.SetPixelLimit(116).LoadFromMemory(file.data(), file.size()),
              Decoder::RESULT_TOO_LARGE);
    EXPECT_EQ(decoder.SetPixelLimit(117).LoadFromMemory(file.data(), file.size()), 0U);
    EXPECT_EQ(Decoder().SetPixelLimit(0xFFFFFFFF).GetPixelLimit(), Decoder::MAX_PIXEL_LIMIT);

    Decoder copy(decoder);
    EXPECT_TRUE(PixelsOf(copy) == PixelsOf(decoder));
    EXPECT_EQ(copy.GetPixelLimit(), 117U);
    ZRB::t_WinRgbQuad colour = {};
    const Bytes last(file.end() - 4, file.end()); // bottom-up: the last stored pixel is (12, 0)
    ASSERT_EQ(copy.GetPixelColor(12, 0, colour), 0U);
    EXPECT_EQ(std::vector<unsigned int>({colour.Blue, colour.Green, colour.Red, colour.Reserved}),
              std::vector<unsigned int>(last.begin(), last.end()));
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
