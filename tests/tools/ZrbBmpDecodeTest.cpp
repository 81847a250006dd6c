// zrb bmp topnm and the decoder's lines of zrb bmp info, run on the sample bitmaps.
#include "ZrbRunner.h"

#include <tuple>

namespace {

std::string SamplePath(const std::string& name) {
    return (std::filesystem::path(LZRB_TEST_DATA_DIR) / "bmp" / name).string();
}

TEST_F(ZrbTest, BmpToPnmWritesTheReferenceFileByteForByte) {
    // Core, 52-byte and 124-byte headers; 1 bit, RLE4, 16-bit masks, top-down rows; alpha.
    const std::vector<std::tuple<std::string, std::string, std::vector<std::string>>> cases = {
        {"im_core_1.bmp", "im_core_1.ppm", {}},
        {"hand_v3_rle4.bmp", "hand_v3_rle4.ppm", {"-o", "-"}},
        {"hand_v2_565.bmp", "hand_v2_565.ppm", {"-o", "out.ppm"}},
        {"hand_v3_24_topdown.bmp", "hand_v3_24_topdown.ppm", {}},
        {"im_v5_32a.bmp", "im_v5_32a.pam", {}},
        {"hand_v3_1555_topdown.bmp", "hand_v3_1555_topdown.pam", {"--output", "out.pam"}},
    };
    for (const auto& [bmp, reference, args] : cases) {
        const ZrbResult r = Zrb({"bmp", "topnm", SamplePath(bmp)}, args);
        EXPECT_EQ(r.status, 0) << bmp << r.err;
        EXPECT_EQ(r.err, "");
        const bool toFile = args.size() == 2 && args[1] != "-";
        const std::string written = Contents(PathOf(toFile ? args[1] : ".stdout"));
        EXPECT_TRUE(written == Contents(SamplePath(reference))) << bmp;
    }
}

TEST_F(ZrbTest, BmpToPnmExplainsRefusalsAndFailedWrites) {
    Write("short.bmp", Contents(SamplePath("im_v3_24.bmp")).substr(0, 80));
    Write("text.bmp", std::string(60, 'B'));
    Write("zero.bmp", "BM" + std::string(60, '\0'));
    const std::string alpha = SamplePath("im_v5_32a.bmp");
    const ZrbCases cases = {
        {{SamplePath("hand_v3_png.bmp"), "-o", "out.pnm"},
         "hand_v3_png.bmp: the bitmap holds an embedded PNG image, which is not decoded here"},
        {{SamplePath("hand_v3_jpeg.bmp")}, "embedded JPEG image"},
        {{SamplePath("im_v3_16_nomasks.bmp")},
         "corrupt: the red mask 0x04000000 is not one run of bits inside a 16-bit pixel"},
        {{"short.bmp", "-o", "out.pnm"},
         "short.bmp: truncated: the file (80 bytes) is shorter than its headers"},
        {{"text.bmp"}, "text.bmp: not a BMP file: it does not start with \"BM\""},
        {{"zero.bmp"}, "zero.bmp: not a BMP file: unknown info header of 0 bytes"},
        {{"missing.bmp"}, "missing.bmp: No such file or directory"},
        {{alpha, "--max-pixels", "116"}, "13 x 9 pixels are above the pixel limit of 116"},
        {{alpha, "--max-pixels", "0x40000000"}, "--max-pixels \"0x40000000\" is not a number"},
        {{alpha, "-o", "/dev/full"}, "zrb bmp topnm: /dev/full: cannot be written: No space"},
        {{alpha, "-o", "no/such/dir.pam"}, "no/such/dir.pam: cannot be created"},
    };
    ExpectRefusals({"bmp", "topnm"}, cases);
    EXPECT_FALSE(std::filesystem::exists(PathOf("out.pnm"))); // nothing decoded, nothing left
    EXPECT_EQ(Zrb({"bmp", "topnm", alpha, "--max-pixels", "117"}).status, 0);

    // Standard output refused: said once, by the command itself.
    const ZrbResult full = Shell("\"$ZRB\" bmp topnm '" + alpha + "' > /dev/full");
    EXPECT_EQ(full.status, 2);
    EXPECT_EQ(full.err, "zrb bmp topnm: standard output: cannot be written: No space left on "
                        "device\n");
}

TEST_F(ZrbTest, BmpInfoAddsWhatTheDecoderSees) {
    Write("short.bmp", Contents(SamplePath("im_v3_24.bmp")).substr(0, 80));
    const std::vector<std::tuple<std::string, int, std::vector<std::string>>> cases = {
        {SamplePath("im_core_8.bmp"),
         0,
         {"header         12-byte info header", "palette        256 entries",
          "pixel queries  none: the reader cannot read it: unknown info header of 12 bytes",
          "decoder        yes: 13 x 9 pixels, rows stored bottom-up",
          "masks          none: a palette of 256 entries", "alpha          no"}},
        {SamplePath("hand_v3_1555_topdown.bmp"),
         0,
         {"pixel colour   no: the reader does not address top-down images",
          "decoder        yes: 7 x 5 pixels, rows stored top-down",
          "masks          red 0x7c00, green 0x03e0, blue 0x001f, alpha 0x8000",
          "alpha          yes"}},
        {SamplePath("im_v3_24.bmp"),
         0,
         {"pixel colour   yes", "masks          red 0xff0000, green 0x00ff00, blue 0x0000ff, "
                                "alpha 0x000000"}},
        {SamplePath("hand_v3_png.bmp"),
         0,
         {"decoder        no: the bitmap holds an embedded PNG image"}},
        {"short.bmp",
         2,
         {"pixel queries  none: the palette or pixel data is shorter",
          "decoder        no: truncated: the file (80 bytes)"}},
    };
    for (const auto& [file, status, lines] : cases) {
        const ZrbResult r = Zrb({"bmp", "info", file});
        EXPECT_EQ(r.status, status) << file << r.err;
        for (const std::string& line : lines) {
            EXPECT_EQ(CountLines(r.out, line), 1) << file << ": " << line << "\n" << r.out;
        }
    }
}

} // namespace
