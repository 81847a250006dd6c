// zrb bmp and zrb csv run as programs on files made here.
#include "ZrbRunner.h"

#include <tuple>

namespace {

// 2 x 2 pixels of 8 bits, two palette entries: the top row (indices 0 1) over (1 0).
BmpFile Eight(unsigned int headerSize = 40) {
    return {headerSize, 8, {{0, 1}, {1, 0}}, {0x000000, 0xFF8000}, 2};
}

TEST_F(ZrbTest, BmpInfoSaysWhatTheHeaderHoldsAndWhatTheReaderAnswers) {
    Write("eight.bmp", Eight().Build());
    Write("four.bmp", BmpFile{40, 4, {{1, 0}}, {0x000000, 0xFF8000}, 2}.Build());
    Write("v5.bmp", Eight(124).Build());
    Write("rgb.bmp", BmpFile{40, 24, {{0x102030}}, {}}.Build());
    const std::vector<std::tuple<std::string, std::vector<std::string>>> cases = {
        {"eight.bmp",
         {"header         40-byte info header",
          "size           2 x 2 pixels, rows stored bottom-up", "depth          8 bits per pixel",
          "palette        2 entries", "pixel data     8 bytes at offset 62", "pixel colour   yes",
          "palette index  yes"}},
        {"four.bmp", {"pixel colour   no: the reader does not decode 4-bit pixels"}},
        {"v5.bmp",
         {"header         124-byte info header",
          "pixel colour   no: the reader gives colours only with the 40-byte info header",
          "palette index  yes"}},
        {"rgb.bmp", {"palette        0 entries", "palette index  no: the image has no palette"}},
    };
    for (const auto& [file, lines] : cases) {
        const ZrbResult r = Zrb({"bmp", "info", file});
        EXPECT_EQ(r.status, 0) << r.err;
        for (const std::string& line : lines) {
            EXPECT_EQ(CountLines(r.out, line), 1) << file << ": " << line << "\n" << r.out;
        }
    }
}

TEST_F(ZrbTest, BmpPixelPrintsColourAndIndexOrTheReason) {
    BmpFile topDown = Eight();
    topDown.topDown = true;
    topDown.sizeImage = 8;
    Write("eight.bmp", Eight().Build());
    Write("v5.bmp", Eight(124).Build());
    Write("rgb.bmp", BmpFile{40, 24, {{0x102030}}, {}}.Build());
    Write("topdown.bmp", topDown.Build());
    Write("short.bmp", Eight().Build().substr(0, 66));
    Write("text.bmp", std::string(60, 'B'));
    Write("tiny.bmp", "BM");
    const std::vector<std::tuple<std::vector<std::string>, int, std::string, std::string>> cases = {
        {{"eight.bmp", "1", "0"}, 0, "(1, 0)  #ff8000  rgb(255, 128, 0)  index 1\n", ""},
        {{"eight.bmp", "1", "1"}, 0, "(1, 1)  #000000  rgb(0, 0, 0)  index 0\n", ""},
        {{"rgb.bmp", "0", "0"}, 0, "(0, 0)  #102030  rgb(16, 32, 48)\n", ""},
        {{"v5.bmp", "0", "1"}, 2, "(0, 1)  index 1\n", "with the 40-byte info header"},
        {{"eight.bmp", "2", "0"}, 2, "", "pixel (2, 0) is outside the 2 x 2 image"},
        {{"eight.bmp", "-1", "0"}, 2, "", "X \"-1\" is not a number"},
        {{"topdown.bmp", "0", "0"}, 2, "(0, 0)\n", "top-down"},
        {{"short.bmp", "0", "0"}, 2, "", "shorter than the header announces"},
        {{"text.bmp", "0", "0"}, 2, "", "does not start with \"BM\""},
        {{"tiny.bmp", "0", "0"}, 2, "", "too short for a BMP file (2 bytes"},
        {{"missing.bmp", "0", "0"}, 2, "", "missing.bmp: No such file or directory"},
    };
    for (const auto& [args, status, out, message] : cases) {
        const ZrbResult r = Zrb({"bmp", "pixel"}, args);
        EXPECT_EQ(r.status, status) << args[0] << r.err;
        EXPECT_EQ(r.out, out) << args[0];
        EXPECT_NE(r.err.find(message), std::string::npos) << r.err;
    }
}

TEST_F(ZrbTest, CsvCheckCountsRecordsOrNamesTheFirstBadLine) {
    Write("good.csv", "a,b,c\r\n1,2,3\r\n4,,6,\n");
    Write("semi.csv", "a;b;c\n");
    Write("tabs.csv", "a\tb\tc\n");
    Write("bad.csv", "a,b,c\n1,2,3\n4,5\n7,8,9\n");
    Write("quoted.csv", "a,\"b,c\",d\n");
    const std::vector<std::tuple<std::vector<std::string>, int, std::string>> cases = {
        {{"good.csv"}, 0, "good.csv: 3 record(s) of 3 field(s)\n"},
        {{"semi.csv", "--sep", ";"}, 0, "semi.csv: 1 record(s) of 3 field(s)\n"},
        {{"tabs.csv", "--sep", "tab"}, 0, "tabs.csv: 1 record(s) of 3 field(s)\n"},
        {{"bad.csv"}, 1, "bad.csv: line 3: 2 field(s), 3 expected\n"},
        {{"quoted.csv"},
         1,
         "quoted.csv: line 1: 4 field(s), 3 expected (quotes are not special: a separator "
         "between quotes still splits)\n"},
    };
    for (const auto& [args, status, out] : cases) {
        const ZrbResult r = Zrb({"csv", "check", "--fields", "3"}, args);
        EXPECT_EQ(r.status, status) << r.err;
        EXPECT_EQ(r.out, out);
    }
}

TEST_F(ZrbTest, CsvCutPrintsChosenColumnsInTheOrderGiven) {
    Write("good.csv", "a,b,c\r\n1,2,3\r\n4,,6,\n");
    Write("bad.csv", "a,b\n");
    const ZrbResult r = Zrb({"csv", "cut", "good.csv", "--fields", "3", "-k", "3,1,3"});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, "c,a,c\n3,1,3\n6,4,6\n");
    EXPECT_EQ(Zrb({"csv", "cut", "good.csv", "--fields", "3", "--sep", ";", "-k", "1"}).status, 2);

    const ZrbCases cases = {
        {{"good.csv", "--fields", "3", "-k", "4"}, "column 4 is not between 1 and 3"},
        {{"good.csv", "--fields", "0", "-k", "1"}, "--fields"},
        {{"good.csv", "--fields", "3", "--sep", "::", "-k", "1"}, "one character"},
        {{"bad.csv", "--fields", "3", "-k", "1"}, "line 1: 2 field(s), 3 expected"},
        {{"missing.csv", "--fields", "3", "-k", "1"}, "No such file or directory"}};
    ExpectRefusals({"csv", "cut"}, cases);
}

} // namespace
