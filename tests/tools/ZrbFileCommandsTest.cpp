// zrb bmp and zrb csv run as programs on files made here.
#include "ZrbRunner.h"

#include <tuple>

namespace {

void Put(std::string& bytes, unsigned int value, int size) {
    for (int i = 0; i < size; ++i) {
        bytes += static_cast<char>(value >> (8 * i));
    }
}

// A BMP file of the given form: `palette` entries (each 0x00RRGGBB), then `pixels`.
std::string Bmp(int width, int height, unsigned short bits, const std::string& pixels,
                std::vector<unsigned int> palette = {}, unsigned int headerSize = 40) {
    const unsigned int offset = 14 + headerSize + 4 * static_cast<unsigned int>(palette.size());
    std::string bytes = "BM";
    for (const auto& [value, size] : std::vector<std::pair<unsigned int, int>>{
             {offset + static_cast<unsigned int>(pixels.size()), 4},
             {0, 4},
             {offset, 4},
             {headerSize, 4},
             {static_cast<unsigned int>(width), 4},
             {static_cast<unsigned int>(height), 4},
             {1, 2},
             {bits, 2},
             {0, 4},
             {static_cast<unsigned int>(pixels.size()), 4},
             {0, 4},
             {0, 4},
             {static_cast<unsigned int>(palette.size()), 4},
             {0, 4}}) {
        Put(bytes, value, size);
    }
    bytes.resize(14 + headerSize, '\0');
    for (const unsigned int entry : palette) {
        Put(bytes, entry, 4);
    }
    return bytes + pixels;
}

const std::vector<unsigned int> kTwoColours = {0x000000, 0xFF8000};
// 2 x 2 pixels, the bottom row (indices 1 0) stored first, then the top row (0 1).
const std::string kEightBitRows("\x01\x00\x00\x00\x00\x01\x00\x00", 8);

TEST_F(ZrbTest, BmpInfoSaysWhatTheHeaderHoldsAndWhatTheReaderAnswers) {
    Write("eight.bmp", Bmp(2, 2, 8, kEightBitRows, kTwoColours));
    Write("four.bmp", Bmp(2, 1, 4, std::string(4, '\x10'), kTwoColours));
    Write("v5.bmp", Bmp(2, 2, 8, kEightBitRows, kTwoColours, 124));
    Write("rgb.bmp", Bmp(1, 1, 24, std::string("\x30\x20\x10\x00", 4)));
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
    Write("eight.bmp", Bmp(2, 2, 8, kEightBitRows, kTwoColours));
    Write("v5.bmp", Bmp(2, 2, 8, kEightBitRows, kTwoColours, 124));
    Write("rgb.bmp", Bmp(1, 1, 24, std::string("\x30\x20\x10\x00", 4)));
    Write("topdown.bmp", Bmp(2, -2, 8, kEightBitRows, kTwoColours));
    Write("short.bmp", Bmp(2, 2, 8, kEightBitRows, kTwoColours).substr(0, 66));
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
        std::vector<std::string> argv = {"bmp", "pixel"};
        argv.insert(argv.end(), args.begin(), args.end());
        const ZrbResult r = Zrb(argv);
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
        std::vector<std::string> argv = {"csv", "check", "--fields", "3"};
        argv.insert(argv.end(), args.begin(), args.end());
        const ZrbResult r = Zrb(argv);
        EXPECT_EQ(r.status, status) << r.err;
        EXPECT_EQ(r.out, out);
    }
}

TEST_F(ZrbTest, CsvCutPrintsChosenColumnsInTheOrderGiven) {
    Write("good.csv", "a,b,c\r\n1,2,3\r\n4,,6,\n");
    Write("bad.csv", "a,b\n");
    ZrbResult r = Zrb({"csv", "cut", "good.csv", "--fields", "3", "-k", "3,1,3"});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, "c,a,c\n3,1,3\n6,4,6\n");
    EXPECT_EQ(Zrb({"csv", "cut", "good.csv", "--fields", "3", "--sep", ";", "-k", "1"}).status, 2);

    for (const auto& [args, message] :
         std::vector<std::tuple<std::vector<std::string>, std::string>>{
             {{"good.csv", "--fields", "3", "-k", "4"}, "column 4 is not between 1 and 3"},
             {{"good.csv", "--fields", "0", "-k", "1"}, "--fields"},
             {{"good.csv", "--fields", "3", "--sep", "::", "-k", "1"}, "one character"},
             {{"bad.csv", "--fields", "3", "-k", "1"}, "line 1: 2 field(s), 3 expected"},
             {{"missing.csv", "--fields", "3", "-k", "1"}, "No such file or directory"}}) {
        std::vector<std::string> argv = {"csv", "cut"};
        argv.insert(argv.end(), args.begin(), args.end());
        r = Zrb(argv);
        EXPECT_EQ(r.status, 2) << message;
        EXPECT_NE(r.err.find(message), std::string::npos) << r.err;
    }
}

} // namespace
