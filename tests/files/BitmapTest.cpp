#include "CZRB_Exception.h"
#include "CZRB_WinBitmapData.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <random>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

typedef std::vector<unsigned char> Bytes;

void Put16(Bytes& out, unsigned int v) {
    out.push_back(static_cast<unsigned char>(v));
    out.push_back(static_cast<unsigned char>(v >> 8));
}
void Put32(Bytes& out, unsigned int v) {
    Put16(out, v & 0xFFFFU);
    Put16(out, v >> 16);
}

// A BMP file built byte by byte. `rows` are the pixel rows top row first, each a list of
// palette indexes (1, 4, 8 bits) or 0x00RRGGBB colours (24, 32 bits); they are packed MSB
// first, padded to 4 bytes and stored bottom-up (top-down when height is negative).
struct BmpFile {
    unsigned int headerSize = 40;
    int bits = 24;
    std::vector<std::vector<unsigned int>> rows;
    std::vector<unsigned int> palette;
    unsigned int colorsUsed = 0;
    unsigned int sizeImage = 0; // 0: the real pixel byte count
    bool topDown = false;
    long long dataOffsetDelta = 0; // added to the real offset
    std::string magic = "BM";

    int Width() const { return rows.empty() ? 0 : static_cast<int>(rows[0].size()); }
    static Bytes PackRow(const std::vector<unsigned int>& row, int bits) {
        Bytes out;
        if (bits >= 24) {
            for (unsigned int c : row) {
                out.push_back(static_cast<unsigned char>(c));
                out.push_back(static_cast<unsigned char>(c >> 8));
                out.push_back(static_cast<unsigned char>(c >> 16));
                if (bits == 32) {
                    out.push_back(0);
                }
            }
        } else {
            unsigned int acc = 0, used = 0;
            for (unsigned int v : row) {
                acc = (acc << bits) | v;
                used += static_cast<unsigned int>(bits);
                if (used == 8) {
                    out.push_back(static_cast<unsigned char>(acc));
                    acc = used = 0;
                }
            }
            if (used) {
                out.push_back(static_cast<unsigned char>(acc << (8 - used)));
            }
        }
        while (out.size() % 4) {
            out.push_back(0xEE); // padding bytes that must never be read as pixels
        }
        return out;
    }
    Bytes PixelBytes() const {
        Bytes out;
        for (size_t i = 0; i < rows.size(); ++i) {
            const Bytes row = PackRow(rows[topDown ? i : rows.size() - 1 - i], bits);
            out.insert(out.end(), row.begin(), row.end());
        }
        return out;
    }
    Bytes Build() const {
        const Bytes pixels = PixelBytes();
        const unsigned int offset =
            static_cast<unsigned int>(14 + headerSize + 4 * palette.size() +
                                      static_cast<unsigned long long>(dataOffsetDelta));
        Bytes out(magic.begin(), magic.end());
        Put32(out, static_cast<unsigned int>(offset + pixels.size()));
        Put32(out, 0);
        Put32(out, offset);
        Put32(out, headerSize);
        Put32(out, static_cast<unsigned int>(Width()));
        const int height = static_cast<int>(rows.size());
        Put32(out, static_cast<unsigned int>(topDown ? -height : height));
        Put16(out, 1);
        Put16(out, static_cast<unsigned int>(bits));
        Put32(out, 0);
        Put32(out, sizeImage);
        Put32(out, 2835);
        Put32(out, 2835);
        Put32(out, colorsUsed);
        Put32(out, 0);
        out.resize(14 + headerSize, 0);
        for (unsigned int entry : palette) {
            Put32(out, entry);
        }
        out.resize(offset > out.size() ? offset : out.size(), 0);
        out.insert(out.end(), pixels.begin(), pixels.end());
        return out;
    }
};

// Deterministic rows of `height` x `width` values below `limit`.
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

class Bitmap : public ::testing::Test {
protected:
    void SetUp() override {
        char pattern[] = "/tmp/lzrb_bitmap_XXXXXX";
        ASSERT_NE(mkdtemp(pattern), nullptr);
        m_dir = pattern;
    }
    void TearDown() override {
        for (const std::string& file : m_files) {
            std::remove(file.c_str());
        }
        rmdir(m_dir.c_str());
    }
    // Writes `bytes` to a new file in the temporary directory and returns its path.
    CZRB_String Write(const Bytes& bytes) {
        const std::string path = m_dir + "/f" + std::to_string(m_files.size()) + ".bmp";
        std::ofstream(path, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
        m_files.push_back(path);
        return CZRB_String(path.c_str());
    }
    // Every pixel of `file` must answer its palette index and colour as built.
    void ExpectPalettePixels(CZRB_WinBitmapData& bmp, const BmpFile& file) {
        for (size_t y = 0; y < file.rows.size(); ++y) {
            for (size_t x = 0; x < file.rows[y].size(); ++x) {
                unsigned int index = 99;
                ZRB::t_WinRgbQuad colour{};
                const unsigned int ux = static_cast<unsigned int>(x);
                const unsigned int uy = static_cast<unsigned int>(y);
                ASSERT_EQ(bmp.GetPixelColorIndex(ux, uy, index), 0U);
                ASSERT_EQ(index, file.rows[y][x]) << x << "," << y;
                ASSERT_EQ(bmp.GetPixelColor(ux, uy, colour), 0U);
                const unsigned int entry = file.palette[index];
                EXPECT_EQ(colour.Red, (entry >> 16) & 0xFF);
                EXPECT_EQ(colour.Green, (entry >> 8) & 0xFF);
                EXPECT_EQ(colour.Blue, entry & 0xFF);
                EXPECT_EQ(colour.Reserved, entry >> 24);
            }
        }
    }

    std::string m_dir;
    std::vector<std::string> m_files;
};

} // namespace

TEST_F(Bitmap, TwentyFourBitPixelsAreReadBottomUpPastThePadding) {
    BmpFile file;
    file.rows = MakeRows(3, 4, 0x1000000U);
    CZRB_WinBitmapData bmp;
    ASSERT_EQ(bmp.LoadFromFile(Write(file.Build())), 0U);
    EXPECT_EQ(bmp.GetInfo()->biSizeImage, 48U); // 3 pixels -> 9 bytes, padded to 12
    for (unsigned int y = 0; y < 4; ++y) {
        for (unsigned int x = 0; x < 3; ++x) {
            ZRB::t_WinRgbQuad c{};
            ASSERT_EQ(bmp.GetPixelColor(x, y, c), 0U);
            const unsigned int want = file.rows[y][x];
            EXPECT_EQ((c.Red << 16) | (c.Green << 8) | c.Blue, want) << x << "," << y;
            EXPECT_EQ(c.Reserved, 0);
        }
    }
    ZRB::t_WinRgbQuad c{};
    unsigned int index = 0;
    EXPECT_EQ(bmp.GetPixelColor(3, 0, c), 3U);
    EXPECT_EQ(bmp.GetPixelColor(0, 4, c), 3U);
    EXPECT_EQ(bmp.GetPixelColorIndex(0, 0, index), 10U);
    EXPECT_EQ(bmp.GetPaletteDepth(), 0U);

    // Deep copy survives the original being destroyed.
    CZRB_WinBitmapData copy(bmp);
    bmp.Destroy();
    EXPECT_EQ(bmp.GetInfo()->biWidth, 0);
    EXPECT_EQ(bmp.GetPixelColor(0, 0, c), 3U);
    ASSERT_EQ(copy.GetPixelColor(2, 3, c), 0U);
    EXPECT_EQ((c.Red << 16) | (c.Green << 8) | c.Blue, file.rows[3][2]);
}

TEST_F(Bitmap, PaletteImagesGiveIndexesAndColours) {
    for (int bits : {1, 8}) {
        for (unsigned int headerSize : {40U, 108U, 124U}) {
            BmpFile file;
            file.bits = bits;
            file.headerSize = headerSize;
            file.rows = MakeRows(bits == 1 ? 10 : 5, 3, bits == 1 ? 2 : 200);
            file.palette = MakePalette(bits == 1 ? 2 : 256);
            CZRB_WinBitmapData bmp;
            ASSERT_EQ(bmp.LoadFromFile(Write(file.Build())), 0U);
            EXPECT_EQ(bmp.GetPaletteDepth(), bits == 1 ? 2U : 256U);
            EXPECT_EQ(bmp.GetPaletteEntry(1), file.palette[1]);
            EXPECT_EQ(bmp.GetPaletteEntry(bits == 1 ? 2 : 256), 0U);
            if (headerSize == 40) {
                ExpectPalettePixels(bmp, file);
            } else {
                ZRB::t_WinRgbQuad c{};
                EXPECT_EQ(bmp.GetPixelColor(0, 0, c), 10U);
            }
        }
    }
    // Colours used overrides the depth's palette size; 0x10000 (low 16 bits 0) means none.
    BmpFile small;
    small.bits = 8;
    small.rows = MakeRows(6, 2, 5);
    small.palette = MakePalette(5);
    small.colorsUsed = 5;
    CZRB_WinBitmapData bmp;
    ASSERT_EQ(bmp.LoadFromFile(Write(small.Build())), 0U);
    EXPECT_EQ(bmp.GetPaletteDepth(), 5U);
    ExpectPalettePixels(bmp, small);
    small.palette.clear();
    small.colorsUsed = 0x10000;
    ASSERT_EQ(bmp.LoadFromFile(Write(small.Build())), 0U);
    unsigned int index = 0;
    EXPECT_EQ(bmp.GetPaletteDepth(), 0U);
    EXPECT_EQ(bmp.GetPixelColorIndex(0, 0, index), 10U);
}

TEST_F(Bitmap, UnsupportedLayoutsLoadButAnswerWithCodes) {
    struct Case {
        int bits;
        unsigned int paletteSize, colourCode, indexCode;
    };
    for (const Case& k : {Case{4, 16, 8, 8}, Case{32, 0, 8, 10}, Case{16, 0, 8, 10}}) {
        BmpFile file;
        file.bits = k.bits;
        file.rows = MakeRows(5, 2, k.bits == 4 ? 16 : 0x10000);
        if (k.bits == 16) { // 10 pixels of 2 bytes fill the same rows as 5 pixels of 4
            file.bits = 32;
        }
        file.palette = MakePalette(k.paletteSize);
        Bytes bytes = file.Build();
        bytes[28] = static_cast<unsigned char>(k.bits);
        bytes[18] = k.bits == 16 ? 10 : 5;
        CZRB_WinBitmapData bmp;
        ASSERT_EQ(bmp.LoadFromFile(Write(bytes)), 0U) << k.bits;
        EXPECT_EQ(bmp.GetPaletteDepth(), k.paletteSize);
        ZRB::t_WinRgbQuad c{};
        unsigned int index = 0;
        EXPECT_EQ(bmp.GetPixelColor(1, 1, c), k.colourCode) << k.bits;
        EXPECT_EQ(bmp.GetPixelColorIndex(1, 1, index), k.indexCode) << k.bits;
    }

    // A top-down image loads (with its image size given) but answers 3 for every y.
    BmpFile file;
    file.rows = MakeRows(2, 2, 0x1000000U);
    file.topDown = true;
    file.sizeImage = 16;
    CZRB_WinBitmapData bmp;
    ASSERT_EQ(bmp.LoadFromFile(Write(file.Build())), 0U);
    ZRB::t_WinRgbQuad c{};
    EXPECT_EQ(bmp.GetPixelColor(0, 0, c), 3U);
    // Without the image size the computed size is huge (negative height) and 30 follows.
    file.sizeImage = 0;
    EXPECT_EQ(bmp.LoadFromFile(Write(file.Build())), 30U);
}

TEST_F(Bitmap, HeadersAreReadWithoutLoading) {
    BmpFile file;
    file.bits = 8;
    file.rows = MakeRows(5, 3, 256);
    file.palette = MakePalette(256);
    CZRB_WinBitmapData::SInfoHeader header{};
    unsigned int offset = 0;
    ASSERT_EQ(CZRB_WinBitmapData::ReadInfoFromFile(Write(file.Build()), header, &offset), 0U);
    EXPECT_EQ(offset, 14U + 40U + 1024U);
    EXPECT_EQ(header.biWidth, 5);
    EXPECT_EQ(header.biHeight, 3);
    EXPECT_EQ(header.biBitCount, 8);
    EXPECT_EQ(header.biSizeImage, 24U); // ((8 * 5 + 31) / 32) * 3 * 4
    EXPECT_EQ(header.biXPelsPerMeter, 2835);
    EXPECT_EQ(CZRB_WinBitmapData::GetPaletteDepth(header), 256U);
    EXPECT_EQ(CZRB_WinBitmapData::ReadInfoFromFile(Write(file.Build()), header, nullptr), 0U);
    EXPECT_EQ(CZRB_WinBitmapData::ReadInfoFromFile(CZRB_String((m_dir + "/none").c_str()), header,
                                                   nullptr),
              30U);
}

TEST_F(Bitmap, BrokenFilesGiveResultCodes) {
    BmpFile good;
    good.bits = 8;
    good.rows = MakeRows(4, 4, 4);
    good.palette = MakePalette(4);
    good.colorsUsed = 4;
    const Bytes valid = good.Build();

    struct Case {
        const char* what;
        Bytes bytes;
        unsigned int code;
    };
    std::vector<Case> cases;
    cases.push_back({"empty", Bytes(), 11});
    cases.push_back({"17 bytes", Bytes(valid.begin(), valid.begin() + 17), 11});
    cases.push_back({"53 bytes", Bytes(valid.begin(), valid.begin() + 53), 11});
    Bytes ba = valid;
    ba[1] = 'A';
    cases.push_back({"BA", ba, 11});
    Bytes core = valid;
    core[14] = 12;
    cases.push_back({"12-byte header", core, 11});
    cases.push_back({"palette cut", Bytes(valid.begin(), valid.begin() + 60), 30});
    cases.push_back({"pixels cut", Bytes(valid.begin(), valid.end() - 1), 30});
    Bytes offset = valid;
    offset[13] = 0x7F; // pixel data offset far beyond the end
    cases.push_back({"offset beyond file", offset, 30});
    Bytes hugeSize = valid;
    hugeSize[37] = 0xFF; // image size 0xFF000000
    cases.push_back({"huge image size", hugeSize, 30});
    Bytes hugeWidth = valid;
    hugeWidth[21] = 0x7F; // width 0x7F000004, image size computed
    hugeWidth[34] = hugeWidth[35] = hugeWidth[36] = hugeWidth[37] = 0;
    cases.push_back({"huge width", hugeWidth, 30});
    Bytes hugePalette = valid;
    hugePalette[46] = hugePalette[47] = 0xFF; // 65535 colours used
    cases.push_back({"huge palette", hugePalette, 30});

    for (const Case& c : cases) {
        CZRB_WinBitmapData bmp;
        EXPECT_EQ(bmp.LoadFromFile(Write(c.bytes)), c.code) << c.what;
        ZRB::t_WinRgbQuad colour{};
        unsigned int index = 0;
        if (c.code == 30) { // destroyed after the failure: no pixel answers
            EXPECT_EQ(bmp.GetInfo()->biWidth, 0) << c.what;
            EXPECT_EQ(bmp.GetPixelColor(0, 0, colour), 3U) << c.what;
        }
        EXPECT_NE(bmp.GetPixelColorIndex(0, 0, index), 0U) << c.what;
    }
    CZRB_WinBitmapData bmp;
    EXPECT_EQ(bmp.LoadFromFile(CZRB_String((m_dir + "/missing.bmp").c_str())), 30U);

    // Zero width with a computed image size of 0: the byte vector refuses it (code 9).
    Bytes zeroWidth = valid;
    zeroWidth[18] = 0;
    zeroWidth[34] = 0;
    try {
        bmp.LoadFromFile(Write(zeroWidth));
        ADD_FAILURE() << "no exception";
    } catch (const CZRB_Exception& e) {
        EXPECT_EQ(e.code, 9U);
    }
}

TEST_F(Bitmap, InconsistentHeadersThrowNoItemInsteadOfReadingOutside) {
    BmpFile big; // 24-bit, 100 x 100 announced, 16 bytes of pixels
    big.rows = MakeRows(100, 100, 1);
    Bytes bytes = big.Build();
    bytes.resize(54 + 16);
    bytes[34] = 16;
    bytes[35] = bytes[36] = bytes[37] = 0;
    CZRB_WinBitmapData bmp;
    ASSERT_EQ(bmp.LoadFromFile(Write(bytes)), 0U);
    ZRB::t_WinRgbQuad c{};
    EXPECT_EQ(bmp.GetPixelColor(0, 0, c), 3U); // top row lies far beyond the data
    // Bottom row (y 99): pixel 5 starts at byte 15, its green and red bytes lie outside.
    EXPECT_EQ(bmp.GetPixelColor(4, 99, c), 0U);
    try {
        bmp.GetPixelColor(5, 99, c);
        ADD_FAILURE() << "no exception";
    } catch (const CZRB_Exception& e) {
        EXPECT_EQ(e.code, 5U);
    }

    BmpFile pal; // 8-bit, two palette entries, pixel index 3
    pal.bits = 8;
    pal.rows = {{3, 1}};
    pal.palette = MakePalette(2);
    pal.colorsUsed = 2;
    ASSERT_EQ(bmp.LoadFromFile(Write(pal.Build())), 0U);
    unsigned int index = 0;
    EXPECT_EQ(bmp.GetPixelColorIndex(0, 0, index), 0U);
    EXPECT_EQ(index, 3U);
    EXPECT_THROW(bmp.GetPixelColor(0, 0, c), CZRB_Exception);
}

// Random corruptions of valid files: every load and every query gives a result code or a
// CZRB_Exception, never a crash or an out-of-bounds read (checked under the sanitizers).
TEST_F(Bitmap, CorruptedFilesNeverReadOutside) {
    std::mt19937 rng(2024);
    std::vector<Bytes> seeds;
    for (int bits : {1, 8, 24}) {
        BmpFile f;
        f.bits = bits;
        f.rows = MakeRows(7, 5, bits == 1 ? 2 : bits == 8 ? 256 : 0x1000000U);
        f.palette = MakePalette(bits == 24 ? 0 : bits == 1 ? 2 : 256);
        seeds.push_back(f.Build());
    }
    const CZRB_String path = Write(Bytes());
    for (int round = 0; round < 300; ++round) {
        Bytes bytes = seeds[static_cast<size_t>(round) % seeds.size()];
        const int edits = 1 + static_cast<int>(rng() % 4);
        for (int e = 0; e < edits; ++e) {
            bytes[2 + rng() % 60] = static_cast<unsigned char>(rng());
        }
        if (rng() % 3 == 0) {
            bytes.resize(rng() % bytes.size());
        }
        std::ofstream(path.GetStringC(), std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
        CZRB_WinBitmapData bmp;
        try {
            if (bmp.LoadFromFile(path) != 0) {
                continue;
            }
        } catch (const CZRB_Exception& e) {
            EXPECT_EQ(e.code, 9U);
            continue;
        }
        for (unsigned int y : {0U, 1U, 4U, 0xFFFFFFFFU}) {
            for (unsigned int x : {0U, 6U, 9U, 0x80000000U}) {
                ZRB::t_WinRgbQuad c{};
                unsigned int index = 0;
                try {
                    bmp.GetPixelColor(x, y, c);
                } catch (const CZRB_Exception& e) {
                    EXPECT_EQ(e.code, 5U);
                }
                try {
                    bmp.GetPixelColorIndex(x, y, index);
                } catch (const CZRB_Exception& e) {
                    EXPECT_EQ(e.code, 5U);
                }
            }
        }
    }
}
