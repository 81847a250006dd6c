// Real failures of the system, no mocks: a device that refuses every byte, a file size limit, a
// folder or a missing folder where a file is expected, a read-only file, a file cut short or
// deleted while it is read. Each test states what the caller gets and what stays in the file.
#include "CZRB_CsvFile.h"
#include "CZRB_File.h"
#include "CZRB_FileBuffer.h"
#include "CZRB_WinBitmapData.h"
#include "FileTestSupport.h"

#include <csignal>
#include <functional>
#include <grp.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int kCannotRunChild = 77;

// Runs `check` in a child process and returns its exit status. With `asUser` the child first
// becomes the user nobody when this process runs as root (root may write any file);
// kCannotRunChild when it cannot.
int RunInChild(const std::function<int()>& check, bool asUser = false) {
    const pid_t child = fork();
    if (child == 0) {
        if (asUser && geteuid() == 0 &&
            (setgroups(0, nullptr) != 0 || setgid(65534) != 0 || setuid(65534) != 0)) {
            _exit(kCannotRunChild);
        }
        _exit(check());
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status)) {
        return -1;
    }
    return WEXITSTATUS(status);
}

using FileFaultTest = TempDirTest;

} // namespace

TEST_F(FileFaultTest, EveryWritePathReportsBytesTheDeviceRefusesAndCloseDoesToo) {
    if (!CZRB_File::IsPresent("/dev/full")) {
        GTEST_SKIP() << "no /dev/full";
    }
    char data[] = "abc";
    // Each path, the code it returns when every write fails; Close then returns 30.
    const std::tuple<const char*, std::function<unsigned int(CZRB_File&)>, unsigned int> paths[] = {
        {"Write with flush", [&](CZRB_File& f) { return f.Write(data, 3, 1); }, 30},
        {"Write, then Flush", [&](CZRB_File& f) { return f.Write(data, 3, 0) + f.Flush(); }, 19},
        {"Write left to Close", [&](CZRB_File& f) { return f.Write(data, 3, 0); }, 0},
        {"WriteText", [](CZRB_File& f) { return f.WriteText("abc"); }, 30},
        {"WriteTextLine, text", [](CZRB_File& f) { return f.WriteTextLine("abc", 0); }, 30},
        {"WriteTextLine, line end", [](CZRB_File& f) { return f.WriteTextLine("", 2); }, 30},
        {"WriteTextLine, both", [](CZRB_File& f) { return f.WriteTextLine("abc", 7); }, 30},
    };
    for (const auto& [name, write, code] : paths) {
        CZRB_File file;
        ASSERT_EQ(file.Open("/dev/full", CZRB_File::OPEN_WRITE), 0U);
        EXPECT_EQ(write(file), code) << name;
        EXPECT_EQ(file.Close(), 30U) << name;
    }

    CZRB_CsvFile csv(2, ';', CZRB_File::LINE_END_LF);
    ASSERT_EQ(csv.Open("/dev/full", CZRB_File::OPEN_WRITE), 0U);
    CZRB_StringVector record(2, CZRB_String("field"));
    CZRB_StringList list(2, CZRB_String("field"));
    EXPECT_EQ(csv.WriteRecord(record) * 100 + csv.WriteRecord(list), 3030U);

    const std::string source = MakeFile("source", "0123456789");
    EXPECT_EQ(CZRB_File::CopyFile("/dev/full", source.c_str(), 4), 30U);

    // The file buffer throws nothing for refused blocks: its last error becomes 30.
    CZRB_File file;
    ASSERT_EQ(file.Open("/dev/full", CZRB_File::OPEN_WRITE), 0U);
    CZRB_FileBuffer buffer(4);
    ASSERT_EQ(buffer.AttachFile(&file, CZRB_Buffer::ACCESS_WRITE), 0U);
    buffer.AppendData(data, 2);
    EXPECT_EQ(buffer.GetLastError(), 0U);
    buffer.AppendData(data, 3); // fills the cache: its block is written
    EXPECT_EQ(buffer.GetLastError(), 30U);
    buffer.Close();
    EXPECT_EQ(buffer.GetLastError() * 100 + file.Close(), 3030U);
}

TEST_F(FileFaultTest, RecordsWrittenBeforeTheFileSizeLimitStayIntact) {
    // The child may write 104 bytes: 14 records of 7 bytes fit, the 15th is refused part way.
    const std::string path = PathOf("limited.csv");
    const int written = RunInChild([&] {
        const rlimit limit{104, 104};
        std::signal(SIGXFSZ, SIG_IGN);
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0) {
            return kCannotRunChild;
        }
        CZRB_CsvFile csv(2, ';', CZRB_File::LINE_END_LF);
        csv.Open(path.c_str(), CZRB_File::OPEN_WRITE | CZRB_File::OPEN_CREATE);
        CZRB_StringVector record(2, CZRB_String("x"));
        for (int accepted = 0; accepted < 200; ++accepted) {
            record[0].SetFromNumber(1000 + accepted);
            const unsigned int result = csv.WriteRecord(record);
            if (result != 0) {
                return result == 30 ? accepted : 255;
            }
        }
        return 255;
    });
    if (written == kCannotRunChild) {
        GTEST_SKIP() << "no file size limit";
    }
    ASSERT_EQ(written, 14);
    std::string records;
    for (int i = 0; i < written; ++i) {
        records += std::to_string(1000 + i) + ";x\n";
    }
    EXPECT_EQ(Contents(path), records + "1014;x"); // the refused record was cut at the limit
}

TEST_F(FileFaultTest, FoldersAndMissingFoldersAreAnsweredAsFilesThatCannotBeOpened) {
    const std::string source = MakeFile("source", "1;2\n");
    const long before = OpenDescriptors();
    for (const std::string& path : {m_dir.string(), PathOf("missing/file")}) {
        CZRB_File file;
        for (unsigned int flags : {0x1U, 0x2U, 0x3U, 0x5U, 0x6U, 0x7U}) {
            EXPECT_EQ(file.Open(path.c_str(), flags) * 10 + file.IsOpen(), 10U) << path << flags;
        }
        CZRB_FileBuffer buffer;
        EXPECT_EQ(buffer.AttachFile(&file, CZRB_Buffer::ACCESS_READ), 19U) << path;
        EXPECT_EQ(CZRB_File::CopyFile(path.c_str(), source.c_str(), 8), 1U) << path;
        EXPECT_EQ(CZRB_File::CopyFile(PathOf("copy").c_str(), path.c_str(), 8), 1U) << path;
        unsigned int lines = 12345;
        CZRB_CsvFile csv(2, ';', CZRB_File::LINE_END_LF);
        EXPECT_EQ(csv.ReadFile(path.c_str(), lines), nullptr) << path;
        EXPECT_EQ(lines, 12345U) << path;
        CZRB_WinBitmapData bitmap;
        CZRB_WinBitmapData::SInfoHeader header{};
        EXPECT_EQ(bitmap.LoadFromFile(path.c_str()), 30U) << path;
        EXPECT_EQ(CZRB_WinBitmapData::ReadInfoFromFile(path.c_str(), header, nullptr), 30U);
    }
    EXPECT_EQ(Contents(source), "1;2\n");
    EXPECT_EQ(OpenDescriptors(), before); // nothing refused was left open
}

TEST_F(FileFaultTest, AReadOnlyFileCannotBeOpenedForWritingAndKeepsItsBytes) {
    // As root the checks run in a child that became the user nobody: root may write any file.
    const std::string path = MakeFile("read-only", "keep\n");
    ASSERT_EQ(chmod(path.c_str(), 0444), 0);
    ASSERT_EQ(chmod(m_dir.c_str(), 0755), 0);
    const std::string source = MakeFile("source", "new\n");
    ASSERT_EQ(chmod(source.c_str(), 0644), 0);
    const int failures = RunInChild(
        [&] {
            int failed = 0;
            CZRB_File file;
            for (unsigned int flags : {0x1U, 0x3U, 0x5U, 0x7U}) {
                failed += file.Open(path.c_str(), flags) != 1;
            }
            failed += CZRB_File::CopyFile(path.c_str(), source.c_str(), 8) != 1;
            CZRB_CsvFile csv(1, ';', CZRB_File::LINE_END_LF);
            CZRB_StringVector record(1, CZRB_String("new"));
            failed += csv.Open(path.c_str(), CZRB_File::OPEN_WRITE) != 1;
            failed += csv.WriteRecord(record) != 19;
            CZRB_String line;
            failed += file.Open(path.c_str(), CZRB_File::OPEN_READ) != 0;
            failed += file.ReadTextLine(line) != 0 || Str(line) != "keep";
            return failed;
        },
        true);
    if (failures == kCannotRunChild) {
        GTEST_SKIP() << "cannot become the user nobody";
    }
    EXPECT_EQ(failures, 0);
    EXPECT_EQ(Contents(path), "keep\n");
}

TEST_F(FileFaultTest, AFileCutShortOrDeletedWhileItIsRead) {
    std::string bytes;
    for (int i = 0; i < 10; ++i) {
        bytes += "line" + std::to_string(i) + "\n";
    }
    // Cut short by another handle after two lines: the loop stops at the new end.
    const std::string path = MakeFile("cut", bytes);
    CZRB_File file;
    ASSERT_EQ(file.Open(path.c_str(), CZRB_File::OPEN_READ), 0U);
    std::vector<std::string> lines;
    CZRB_String line;
    while (!file.IsEOF() && file.ReadTextLine(line) == 0) {
        lines.push_back(Str(line));
        if (lines.size() == 2) {
            ASSERT_EQ(truncate(path.c_str(), 20), 0); // "line0\nline1\nline2\nli"
        }
    }
    EXPECT_EQ(lines, (std::vector<std::string>{"line0", "line1", "line2", "li"}));
    EXPECT_EQ(file.ReadTextLine(line), 24U);
    file.Close();

    // Deleted after one line: the open stream still reads every line to the end.
    const std::string deleted = MakeFile("deleted", bytes);
    ASSERT_EQ(file.Open(deleted.c_str(), CZRB_File::OPEN_READ), 0U);
    ASSERT_EQ(file.ReadTextLine(line), 0U);
    ASSERT_EQ(CZRB_File::DeleteFile(deleted.c_str()), 0U);
    lines.clear();
    while (file.ReadTextLine(line) == 0) {
        lines.push_back(Str(line));
    }
    EXPECT_EQ(lines.size(), 9U);
    EXPECT_EQ(lines.back(), "line9");
    EXPECT_EQ(CZRB_File::IsPresent(deleted.c_str()), 0U);
}
