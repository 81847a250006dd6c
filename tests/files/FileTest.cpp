#include "CZRB_File.h"
#include "FileTestSupport.h"

#include <tuple>

using FileTest = TempDirTest;

TEST_F(FileTest, OpenModesFollowTheFlags) {
    // Flags, whether the file exists, its contents after writing "XY" (null when Open gives 1).
    const std::tuple<unsigned int, bool, const char*> cases[] = {
        {0x1, true, "abcdXY"}, {0x1, false, "XY"},  {0x5, true, "XY"},     {0x3, true, "XYcd"},
        {0x3, false, nullptr}, {0x7, true, "XY"},   {0x2, false, nullptr}, {0x6, false, nullptr},
        {0x0, true, nullptr},  {0x4, true, nullptr}};
    for (const auto& [flags, exists, after] : cases) {
        const std::string name = "m" + std::to_string(flags) + (exists ? "e" : "");
        const std::string path = exists ? MakeFile(name, "abcd") : PathOf(name);
        CZRB_File file;
        ASSERT_EQ(file.Open(path.c_str(), flags), after ? 0U : 1U) << flags;
        EXPECT_EQ(file.GetOpenFlags(), after ? flags : 0U);
        EXPECT_EQ(file.GetPos(), 0U);
        EXPECT_EQ(file.WriteText("XY"), after ? 0U : 19U);
        file.Close();
        EXPECT_EQ(file.GetOpenFlags(), 0U);
        EXPECT_EQ(Contents(path), after ? after : exists ? "abcd" : "") << flags;
    }
}

TEST_F(FileTest, ResultCodesOfClosedFilesSeeksReadsAndWrites) {
    CZRB_File file;
    char buffer[4] = "xy";
    CZRB_String line("keep");
    for (unsigned int code : {file.ToStart(), file.ToEnd(), file.To(5, 3), file.Flush(),
                              file.Write(buffer, 1, 0), file.Read(buffer, 1), file.WriteText("x"),
                              file.WriteTextLine("", CZRB_File::LINE_END_LF)}) {
        EXPECT_EQ(code, 19U);
    }
    EXPECT_EQ(file.ReadTextLine(buffer, 3) * 100 + file.ReadTextLine(line), 3024U);
    EXPECT_EQ(Str(line) + std::to_string(file.WriteText("")), "keep0");
    EXPECT_EQ(file.GetPos() + file.GetLength() + file.IsEOF(), 1U);

    // Seeks, reads and positions within the file: FileReadAheadTest.
    ASSERT_EQ(file.Open(MakeFile("six", "abcdef").c_str(), CZRB_File::OPEN_READ), 0U);
    EXPECT_EQ(file.To(5, 3), 2U);
    EXPECT_EQ(file.ToEnd(), 0U);
    EXPECT_EQ(file.IsEOF(), 1U);
    EXPECT_EQ(file.ToStart(), 0U);
    EXPECT_EQ(file.Read(buffer, (1ULL << 32) | 2U), 30U); // high half set: read, then 30
    EXPECT_EQ(file.GetPos(), 2U);
    EXPECT_EQ(file.Write(buffer, 1, 1), 30U); // opened for reading only
    file.Close();
    if (CZRB_File::IsPresent("/dev/full")) {
        ASSERT_EQ(file.Open("/dev/full", CZRB_File::OPEN_WRITE), 0U);
        EXPECT_EQ(file.Write(buffer, 1, 0), 0U); // still buffered
        EXPECT_EQ(file.Flush(), 19U);
    }
}

TEST_F(FileTest, WritesAreByteExact) {
    CZRB_File file;
    ASSERT_EQ(file.Open(PathOf("out").c_str(), CZRB_File::OPEN_WRITE), 0U);
    char data[] = "raw";
    EXPECT_EQ(file.Write(data, (1ULL << 32) | 3U, 1), 30U); // written, then 30
    EXPECT_EQ(file.WriteTextLine("x", 0x7), 0U);
    EXPECT_EQ(file.WriteTextLine(CZRB_String("cr-lf"), 0x6), 0U);
    EXPECT_EQ(file.WriteTextLine("none", 0), 0U);
    EXPECT_EQ(file.WriteText(CZRB_String("a\0b", 3)), 0U); // the text ends at its zero byte
    EXPECT_EQ(Contents(PathOf("out")), "rawx\0\r\ncr-lf\r\nnonea"s);
}

TEST_F(FileTest, CopiesShareOneStreamAndReopeningLeavesTheOldStreamOpen) {
    const long before = OpenDescriptors();
    {
        const std::string path = MakeFile("shared", "abc");
        CZRB_File first, third;
        ASSERT_EQ(first.Open(path.c_str(), CZRB_File::OPEN_READ), 0U);
        ASSERT_EQ(first.Open(path.c_str(), CZRB_File::OPEN_READ), 0U);
        EXPECT_EQ(OpenDescriptors(), before + 2); // Kept as shipped: the caller closes first
        auto copy = std::make_unique<CZRB_File>(first);
        third = *copy;
        char byte = 0;
        EXPECT_EQ(copy->Read(&byte, 1), 0U);
        copy.reset();
        EXPECT_EQ(third.Read(&byte, 1), 0U);
        EXPECT_EQ(byte, 'b'); // one stream, one position
        first.Close();
        EXPECT_EQ(third.IsOpen() + third.Read(&byte, 1), 19U);
        ASSERT_EQ(third.Open(path.c_str(), CZRB_File::OPEN_READ), 0U);
        EXPECT_FALSE(first.IsOpen());
    }
    EXPECT_EQ(OpenDescriptors(), before + 1); // only the stream left open above
}

TEST_F(FileTest, PathHelpers) {
    const std::string source = MakeFile("source", "0123456789"), copy = PathOf("copy");
    EXPECT_EQ(CZRB_File::IsPresent(source.c_str()) +
                  CZRB_File::DeleteFile(PathOf("missing").c_str()),
              31U);
    for (unsigned int block : {1U, 3U, 10U, 4096U}) {
        EXPECT_EQ(CZRB_File::CopyFile(copy.c_str(), source.c_str(), block), 0U);
        EXPECT_EQ(Contents(copy), "0123456789");
    }
    EXPECT_EQ(CZRB_File::CopyFile(copy.c_str(), PathOf("missing").c_str(), 8), 1U);
    EXPECT_EQ(CZRB_File::CopyFile(PathOf("no/dir").c_str(), source.c_str(), 8), 1U);
    EXPECT_EQ(CodeOf([&] { CZRB_File::CopyFile(copy.c_str(), source.c_str(), 0); }), 9U);
    EXPECT_EQ(Contents(copy), "");
    EXPECT_EQ(CZRB_File::DeleteFile(copy.c_str()), 0U);
    EXPECT_EQ(CZRB_File::IsPresent(copy.c_str()) + CZRB_File::DeleteFile(copy.c_str()), 30U);

    const std::string cwd = std::filesystem::current_path().string();
    EXPECT_EQ(Str(CZRB_File::GetFullPathFromPath("a/./b/../c/")), cwd + "/a/c/");
    EXPECT_EQ(Str(CZRB_File::GetFullPathFromPath("/x/../../y//z/.")), "/y/z");
    EXPECT_EQ(Str(CZRB_File::GetFullPathFromPath("")), "");
    EXPECT_EQ(Str(CZRB_File::GetFullPathFromPath(("/" + std::string(4095, 'n')).c_str())), "");
    for (const char* path : {"C:\\dir\\file.txt", "/d/f.txt"}) {
        EXPECT_EQ(Str(CZRB_File::GetPathFromPath(path)) + "|" +
                      Str(CZRB_File::GetNameFromPath(path)),
                  path[0] == '/' ? "|/d/f.txt" : cwd + "/C:\\dir\\|file.txt");
    }
    CZRB_File file;
    ASSERT_EQ(file.Open(PathOf("dir\\name.txt").c_str(), CZRB_File::OPEN_WRITE), 0U);
    EXPECT_EQ(Str(file.GetName()) + "|" + Str(file.GetPath()), "name.txt|" + PathOf("dir\\"));
}
