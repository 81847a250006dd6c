#include "CZRB_WinBitmapData.h"
#include "FileTestSupport.h"

#include <array>
#include <tuple>

namespace {

// Deterministic rows of width x height values below `limit`.
std::vector<std::vector<unsigned int>> MakeRows(int width, int height, unsigned int limit) {
    std::vector<std::vector<unsigned int>> rows(static_cast<size_t>(height));
    unsigned int seed = 12345;
    for (auto& row : rows) {
        for (int x = 0; x < width; ++x) {
            seed = seed * 1103515245U + 12345U;
            row.push_back((seed >> 8) % limit);
        }
    }
    return rows;
}

std::vector<unsigned int> MakePalette(unsigned int n) {
    std::vector<unsigned int> palette;
    for (unsigned int i = 0; i < n; ++i) {
        palette.push_back(0x01000000U * (i & 3) + 0x00030507U * i);
    }
    return palette;
}

class Bitmap : public TempDirTest {
protected:
    // Writes `bytes` to a new file in the temporary folder and returns its path.
    CZRB_String Write(const std::string& bytes) {
        return MakeFile("f" + std::to_string(m_count++) + ".bmp", bytes).c_str();
    }
    // Every pixel must answer the colour (and with a palette the index) it was built with.
    static void ExpectPixels(CZRB_WinBitmapData& bmp, const BmpFile& file) {
        for (unsigned int y = 0; y < file.rows.size(); ++y) {
            for (unsigned int x = 0; x < file.rows[y].size(); ++x) {
                ZRB::t_WinRgbQuad c{};
                ASSERT_EQ(bmp.GetPixelColor(x, y, c), 0U);
                unsigned int want = file.rows[y][x], index = 999;
                if (!file.palette.empty()) {
                    ASSERT_EQ(bmp.GetPixelColorIndex(x, y, index), 0U);
                    ASSERT_EQ(index, want) << x << "," << y;
                    want = file.palette[index];
                }
                EXPECT_EQ((c.Reserved << 24) | (c.Red << 16) | (c.Green << 8) | c.Blue, want);
            }
        }
    }

    int m_count = 0;
};

} // namespace

TEST_F(Bitmap, TwentyFourBitPixelsAreReadBottomUpPastThePadding) {
    const BmpFile file{40, 24, MakeRows(3, 4, 0x1000000U), {}};
    CZRB_WinBitmapData bmp;
    ASSERT_EQ(bmp.LoadFromFile(Write(file.Build())), 0U);
    EXPECT_EQ(bmp.GetInfo()->biSizeImage, 48U); // 3 pixels: 9 bytes padded to 12
    ExpectPixels(bmp, file);
    ZRB::t_WinRgbQuad c{};
    unsigned int index = 0;
    EXPECT_EQ(bmp.GetPixelColor(3, 0, c) * 100 + bmp.GetPixelColor(0, 4, c), 303U);
    EXPECT_EQ(bmp.GetPixelColorIndex(0, 0, index), 10U);

    CZRB_WinBitmapData copy(bmp); // deep: survives the original's Destroy
    bmp.Destroy();
    EXPECT_EQ(bmp.GetInfo()->biWidth, 0);
    EXPECT_EQ(bmp.GetPixelColor(0, 0, c), 3U);
    ExpectPixels(copy, file);
}

TEST_F(Bitmap, PaletteImagesGiveIndexesAndColours) {
    for (int bits : {1, 8}) {
        for (unsigned int headerSize : {40U, 108U, 124U}) {
            const BmpFile file{headerSize, bits,
                               MakeRows(bits == 1 ? 10 : 5, 3, bits == 1 ? 2 : 200),
                               MakePalette(bits == 1 ? 2 : 256)};
            const CZRB_String path = Write(file.Build());
            CZRB_WinBitmapData::SInfoHeader header{};
            unsigned int offset = 0;
            ASSERT_EQ(CZRB_WinBitmapData::ReadInfoFromFile(path, header, &offset), 0U);
            EXPECT_EQ(offset, 14 + headerSize + 4 * file.palette.size());
            EXPECT_EQ(header.biSizeImage, bits == 1 ? 12U : 24U); // computed: 3 rows of 4 or 8
            EXPECT_EQ(CZRB_WinBitmapData::GetPaletteDepth(header), file.palette.size());
            EXPECT_EQ(CZRB_WinBitmapData::ReadInfoFromFile(path, header, nullptr), 0U);
            CZRB_WinBitmapData bmp;
            ASSERT_EQ(bmp.LoadFromFile(path), 0U);
            EXPECT_EQ(bmp.GetPaletteDepth(), file.palette.size());
            EXPECT_EQ(bmp.GetPaletteEntry(1), file.palette[1]);
            EXPECT_EQ(bmp.GetPaletteEntry(bits == 1 ? 2 : 256), 0U);
            ZRB::t_WinRgbQuad c{};
            if (headerSize == 40) {
                ExpectPixels(bmp, file);
            } else {
                EXPECT_EQ(bmp.GetPixelColor(0, 0, c), 10U);
            }
        }
    }
    // Colours used overrides the depth's palette size; 0x10000 (low 16 bits 0) means none.
    BmpFile small{40, 8, MakeRows(6, 2, 5), MakePalette(5), 5};
    CZRB_WinBitmapData bmp;
    ASSERT_EQ(bmp.LoadFromFile(Write(small.Build())), 0U);
    EXPECT_EQ(bmp.GetPaletteDepth(), 5U);
    ExpectPixels(bmp, small);
    small.palette.clear();
    small.colorsUsed = 0x10000;
    ASSERT_EQ(bmp.LoadFromFile(Write(small.Build())), 0U);
    unsigned int index = 0;
    EXPECT_EQ(bmp.GetPaletteDepth(), 0U);
    EXPECT_EQ(bmp.GetPixelColorIndex(0, 0, index), 10U);
}

TEST_F(Bitmap, UnsupportedLayoutsLoadButAnswerWithCodes) {
    ZRB::t_WinRgbQuad c{};
    unsigned int index = 0;
    // Bits per pixel, palette size, the codes of GetPixelColor and GetPixelColorIndex.
    for (const auto& [bits, paletteSize, colourCode, indexCode] :
         {std::array<unsigned int, 4>{4, 16, 8, 8}, {32, 0, 8, 10}, {16, 0, 8, 10}}) {
        // 10 pixels of 2 bytes fill 5 of 4.
        const BmpFile file{40, bits == 16 ? 32 : int(bits),
                           MakeRows(5, 2, bits == 4 ? 16 : 0x10000), MakePalette(paletteSize)};
        std::string bytes = file.Build();
        bytes[28] = static_cast<char>(bits);
        bytes[18] = bits == 16 ? 10 : 5;
        CZRB_WinBitmapData bmp;
        ASSERT_EQ(bmp.LoadFromFile(Write(bytes)), 0U) << bits;
        EXPECT_EQ(bmp.GetPaletteDepth(), paletteSize);
        EXPECT_EQ(bmp.GetPixelColor(1, 1, c), colourCode) << bits;
        EXPECT_EQ(bmp.GetPixelColorIndex(1, 1, index), indexCode) << bits;
    }
    // A top-down image loads (with its image size given) but answers 3 for every y.
    BmpFile topDown{40, 24, MakeRows(2, 2, 0x1000000U), {}, 0, 16, true};
    CZRB_WinBitmapData bmp;
    ASSERT_EQ(bmp.LoadFromFile(Write(topDown.Build())), 0U);
    EXPECT_EQ(bmp.GetPixelColor(0, 0, c), 3U);
    topDown.sizeImage = 0; // computed from the negative height: huge, so the data is short
    EXPECT_EQ(bmp.LoadFromFile(Write(topDown.Build())), 30U);
}

TEST_F(Bitmap, BrokenFilesGiveResultCodes) {
    const std::string valid = BmpFile{40, 8, MakeRows(4, 4, 4), MakePalette(4), 4}.Build();
    // Overwrites bytes of the valid file from position `at`.
    const auto patched = [&valid](size_t at, const std::string& bytes) {
        return std::string(valid).replace(at, bytes.size(), bytes);
    };
    const std::tuple<const char*, std::string, unsigned int> cases[] = {
        {"empty", std::string(), 11},
        {"17 bytes", valid.substr(0, 17), 11},
        {"53 bytes", valid.substr(0, 53), 11},
        {"BA", patched(1, "A"), 11},
        {"12-byte header", patched(14, "\x0C"), 11},
        {"palette cut", valid.substr(0, 60), 30},
        {"pixels cut", valid.substr(0, valid.size() - 1), 30},
        {"offset beyond file", patched(13, "\x7F"), 30},
        {"huge image size", patched(34, "\0\0\0\xFF"s), 30},
        {"huge width", patched(21, "\x7F"), 30}, // image size computed from it
        {"huge palette", patched(46, "\xFF\xFF"), 30},
    };
    for (const auto& [what, bytes, code] : cases) {
        CZRB_WinBitmapData bmp;
        EXPECT_EQ(bmp.LoadFromFile(Write(bytes)), code) << what;
        ZRB::t_WinRgbQuad colour{};
        unsigned int index = 0;
        EXPECT_NE(bmp.GetPixelColor(0, 0, colour), 0U) << what;
        EXPECT_NE(bmp.GetPixelColorIndex(0, 0, index), 0U) << what;
        EXPECT_TRUE(code != 30 || bmp.GetInfo()->biWidth == 0) << what; // destroyed after a 30
    }
    CZRB_WinBitmapData bmp;
    EXPECT_EQ(bmp.LoadFromFile(PathOf("missing.bmp").c_str()), 30U);
    // Zero width makes the computed image size 0: the byte vector refuses it with code 9.
    EXPECT_EQ(CodeOf([&] { bmp.LoadFromFile(Write(patched(18, "\0"s))); }), 9U);
}

// Headers that announce more than the file holds: code 5 instead of a read outside the data.
// Random corruptions of every kind are the bitmap fuzz target's.
TEST_F(Bitmap, InconsistentHeadersThrowNoItemInsteadOfReadingOutside) {
    BmpFile big{40, 24, MakeRows(100, 100, 1), {}, 0, 16}; // 100 x 100 announced
    CZRB_WinBitmapData bmp;
    ASSERT_EQ(bmp.LoadFromFile(Write(big.Build().substr(0, 54 + 16))), 0U); // 16 bytes of pixels
    ZRB::t_WinRgbQuad c{};
    EXPECT_EQ(bmp.GetPixelColor(0, 0, c), 3U); // the top row lies far beyond the data
    // Bottom row (y 99): pixel 5 starts at byte 15, its green and red bytes lie outside.
    EXPECT_EQ(bmp.GetPixelColor(4, 99, c), 0U);
    EXPECT_EQ(CodeOf([&] { bmp.GetPixelColor(5, 99, c); }), 5U);

    // 8 bits, two palette entries, pixel index 3.
    ASSERT_EQ(bmp.LoadFromFile(Write(BmpFile{40, 8, {{3, 1}}, MakePalette(2), 2}.Build())), 0U);
    unsigned int index = 0;
    EXPECT_EQ(bmp.GetPixelColorIndex(0, 0, index), 0U);
    EXPECT_EQ(index, 3U);
    EXPECT_EQ(CodeOf([&] { bmp.GetPixelColor(0, 0, c); }), 5U);
}
