// zrb crc run as a program: values against published check values and python's zlib.crc32 /
// binascii.crc_hqx, the check mode, the catalogue and bad usage.
#include "ZrbRunner.h"

#include <sstream>
#include <tuple>

namespace {

// 5 MiB + 123 bytes of a linear congruential sequence: several read blocks and an odd tail.
std::string PseudoRandomBytes() {
    std::string bytes(5 * 1024 * 1024 + 123, '\0');
    unsigned int state = 12345;
    for (char& b : bytes) {
        state = state * 1103515245U + 12345U;
        b = static_cast<char>(state >> 16);
    }
    return bytes;
}

TEST_F(ZrbTest, CrcPrintsPlainAndTaggedLines) {
    Write("digits.txt", "123456789");
    Write("empty", "");
    Write("words.bin", std::string("\x01\x00\x01\x00", 4));
    const std::vector<std::tuple<std::vector<std::string>, std::string>> cases = {
        {{"digits.txt"}, "cbf43926  digits.txt\n"},
        {{"-a", "CRC-16/ARC", "digits.txt"}, "bb3d  digits.txt\n"},
        {{"-a", "0x5003", "digits.txt"}, "995dc9bbdf1939fa  digits.txt\n"},
        {{"-a", "iso-hdlc", "--tag", "digits.txt"}, "CRC-32/ISO-HDLC (digits.txt) = cbf43926\n"},
        {{"-a", "XMODEM", "-a", "CRC-8 (SMBUS)", "digits.txt", "empty"},
         "CRC-16/XMODEM (digits.txt) = 31c3\nCRC-8/SMBUS (digits.txt) = f4\n"
         "CRC-16/XMODEM (empty) = 0000\nCRC-8/SMBUS (empty) = 00\n"},
        {{"empty"}, "00000000  empty\n"},
        {{"-a", "mil-std-1760", "words.bin"}, "0006  words.bin\n"}, // 0x0001 << 2 ^ 0x0001 << 1
        {{"--width", "16", "--poly", "0x1021", "digits.txt"}, "31c3  digits.txt\n"},
        {{"--width", "32", "--poly", "0x04C11DB7", "--init", "4294967295", "--refin", "--refout",
          "--xorout", "0xffffffff", "--tag", "digits.txt"},
         "custom:width=32,poly=0x04c11db7,init=0xffffffff,refin=true,refout=true,"
         "xorout=0xffffffff (digits.txt) = cbf43926\n"},
    };
    for (const auto& [args, expected] : cases) {
        const ZrbResult r = Zrb({"crc"}, args);
        EXPECT_EQ(r.status, 0) << args[0] << r.err;
        EXPECT_EQ(r.out, expected) << args[0];
    }
}

TEST_F(ZrbTest, CrcOfLargeInputMatchesZlibWhetherMappedReadOrPiped) {
    Write("big.bin", PseudoRandomBytes());
    EXPECT_EQ(Zrb({"crc", "big.bin", "-"}, {}, PseudoRandomBytes()).out,
              "f8c6f3bc  big.bin\nf8c6f3bc  -\n");
    const ZrbResult piped = Shell("cat big.bin | \"$ZRB\" crc -a XMODEM --tag");
    EXPECT_EQ(piped.out, "CRC-16/XMODEM (-) = 229a\n") << piped.err;
}

TEST_F(ZrbTest, CrcCheckReportsEachFileAndFailsOnMismatch) {
    Write("a.txt", "alpha");
    Write("back\\slash", "beta");
    const std::string plain = Zrb({"crc", "a.txt", "back\\slash"}).out;
    const std::string tagged = Zrb({"crc", "-a", "CRC-64/XZ", "--tag", "a.txt"}).out;
    // A name with a backslash is escaped and its line marked by a leading backslash.
    EXPECT_EQ(CountLines(plain, "  a.txt"), 1);
    EXPECT_EQ(CountLines(plain, "  back\\\\slash"), 1);
    EXPECT_NE(plain.find("\n\\"), std::string::npos);
    Write("sums", plain + tagged + "\r\n");

    ZrbResult r = Zrb({"crc", "-c", "sums"});
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, "a.txt: OK\nback\\slash: OK\na.txt: OK\n");

    Write("a.txt", "alphA");
    r = Zrb({"crc", "--check", "sums"});
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.out, "a.txt: FAILED\nback\\slash: OK\na.txt: FAILED\n");
    EXPECT_EQ(Zrb({"crc", "--quiet", "-c", "sums"}).out, "a.txt: FAILED\na.txt: FAILED\n");

    std::filesystem::remove(m_dir / "a.txt");
    r = Zrb({"crc", "-c", "-"}, {}, plain + "not a line\n");
    EXPECT_EQ(r.status, 2);
    EXPECT_EQ(r.out, "a.txt: FAILED open or read\nback\\slash: OK\n");
    EXPECT_NE(r.err.find("a.txt: No such file or directory"), std::string::npos);
    EXPECT_NE(r.err.find("standard input: line 3: not a CRC line"), std::string::npos);
}

// Every catalogue row, named in tagged lines, reads back to a CRC of the same parameters,
// and its CRC of "123456789" is the check value the listing shows.
TEST_F(ZrbTest, CrcCatalogueNamesReadBackAndMatchTheirCheckValues) {
    Write("digits.txt", "123456789");
    const ZrbResult list = Zrb({"crc", "--list"});
    ASSERT_EQ(list.status, 0);
    std::vector<std::string> args = {"crc"};
    std::vector<std::string> checks;
    std::istringstream rows(list.out);
    for (std::string row; std::getline(rows, row);) {
        args.insert(args.end(), {"-a", row.substr(0, 6)});
        checks.push_back(row.substr(row.rfind(' ') + 1));
    }
    ASSERT_EQ(checks.size(), 97U);
    args.push_back("digits.txt");
    const ZrbResult sums = Zrb(args);
    std::istringstream lines(sums.out);
    for (const std::string& check : checks) {
        std::string line;
        std::getline(lines, line);
        if (check != "-") {
            EXPECT_EQ("0x" + line.substr(line.rfind(' ') + 1), check) << line;
        }
    }
    Write("sums", sums.out);
    EXPECT_EQ(CountLines(Zrb({"crc", "-c", "sums"}).out, ": OK"), 97);

    const ZrbResult selfTest = Zrb({"crc", "--self-test"});
    EXPECT_EQ(selfTest.status, 0);
    EXPECT_EQ(selfTest.out.rfind("96 of 96 catalogue check values match", 0), 0U);
}

TEST_F(ZrbTest, CrcProgressBarOnlyWhenAskedOffTerminal) {
    Write("digits.txt", "123456789");
    EXPECT_EQ(Zrb({"crc", "digits.txt"}).err, "");
    EXPECT_NE(Zrb({"crc", "--progress", "digits.txt"}).err.find("100%"), std::string::npos);
}

TEST_F(ZrbTest, CrcBadUsageAndUnreadableInputExitWithTwoAndSayWhy) {
    Write("digits.txt", "123456789");
    const ZrbCases cases = {
        {{"-a", "CRC-99", "digits.txt"}, "unknown CRC algorithm \"CRC-99\""},
        {{"-a", "0x2000", "digits.txt"}, "no catalogue CRC has the selector 0x2000"},
        {{"--width", "12", "--poly", "3", "digits.txt"}, "8, 16, 32 or 64, not 12"},
        {{"--width", "8", "--poly", "0x107", "digits.txt"}, "wider than 8 bits"},
        {{"--width", "8", "--poly", "7q", "digits.txt"}, "--poly \"7q\" is not a number"},
        {{"--poly", "7", "digits.txt"}, "--width"},
        {{"--list", "digits.txt"}, "excludes"},
        {{"-a", "XMODEM", "-a", "ARC", "-c", "sums"}, "at most one algorithm"},
        {{"missing.txt"}, "missing.txt: No such file or directory"},
        {{"."}, ".: is a directory"},
        {{"-c", "missing.crc"}, "missing.crc: No such file or directory"},
        {{"-c", "digits.txt"}, "digits.txt: line 1: not a CRC line"},
    };
    ExpectRefusals({"crc"}, cases);
}

TEST_F(ZrbTest, EveryCommandHasHelpAndUsageErrorsExitWithTwo) {
    const std::vector<std::string> commands[] = {{},      {"crc"},          {"date"},
                                                 {"bmp"}, {"bmp", "info"},  {"bmp", "pixel"},
                                                 {"csv"}, {"csv", "check"}, {"csv", "cut"}};
    for (const std::vector<std::string>& command : commands) {
        const ZrbResult r = Zrb(command, {"--help"});
        EXPECT_EQ(r.status, 0);
        EXPECT_NE(r.out.find("Usage: zrb"), std::string::npos) << r.out;
    }
    EXPECT_EQ(Zrb({}).status, 2);
    EXPECT_EQ(Zrb({"frobnicate"}).status, 2);
    EXPECT_EQ(Zrb({"bmp"}).status, 2);
    EXPECT_EQ(Zrb({"--version"}).out.rfind("zrb ", 0), 0U);
}

} // namespace
