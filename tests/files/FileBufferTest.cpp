#include "CZRB_FileBuffer.h"
#include "FileTestSupport.h"

#include <algorithm>
#include <random>
#include <tuple>

using FileBufferTest = TempDirTest;

TEST_F(FileBufferTest, ReadsThroughTheCacheAndRecordsTheLastRefill) {
    CZRB_File file;
    ASSERT_EQ(file.Open(MakeFile("six", "abcdef").c_str(), CZRB_File::OPEN_READ), 0U);
    CZRB_FileBuffer buffer(4);
    ASSERT_EQ(buffer.AttachFile(&file, CZRB_Buffer::ACCESS_READ), 0U);
    char out[7] = {};
    buffer.RetrieveData(out, 3);
    EXPECT_EQ(buffer.GetLastError() + buffer.IsEnd(), 0U);
    buffer.RetrieveData(out + 3, 3);
    EXPECT_STREQ(out, "abcdef");
    EXPECT_EQ(buffer.GetLastError() * 10 + buffer.IsEnd(), 301U); // Kept: 30 for the final part
    EXPECT_EQ(CodeOf([&] { buffer.RetrieveData(out, 1); }), 3U);
    buffer.ToStart();
    buffer.RetrieveData(out, 2);
    EXPECT_EQ(std::string(out, 2), "ab");
    file.Close(); // the next refill finds no stream
    buffer.RetrieveData(out, 3);
    EXPECT_EQ(buffer.GetLastError(), 19U);
}

TEST_F(FileBufferTest, AttachmentResultsAndThrownCodes) {
    const std::string path = MakeFile("data", "xyz");
    CZRB_File closed, reading, writing;
    ASSERT_EQ(reading.Open(path.c_str(), CZRB_File::OPEN_READ), 0U);
    ASSERT_EQ(writing.Open(path.c_str(), CZRB_File::OPEN_WRITE), 0U);
    CZRB_FileBuffer buffer(8);
    char byte = 0;
    EXPECT_EQ(CodeOf([&] { buffer.AppendData(&byte, 1); }), 30U);
    EXPECT_EQ(CodeOf([&] { buffer.ToEnd(); }) + CodeOf([&] { buffer.DeleteAll(); }), 16U);
    const std::tuple<CZRB_File*, int, unsigned int> attachments[] = {
        {&reading, 2, 2U},  {&closed, 1, 19U}, {nullptr, 1, 19U}, {&reading, 0, 10U},
        {&writing, 1, 10U}, {&reading, 1, 0U}, {&reading, 1, 10U}};
    for (const auto& [file, access, result] : attachments) {
        EXPECT_EQ(buffer.AttachFile(file, CZRB_Buffer::t_Access(access)), result);
    }
    EXPECT_EQ(CodeOf([&] { buffer.AppendData(&byte, 1); }), 23U);
    buffer.Close();
    ASSERT_EQ(buffer.AttachFile(&writing, CZRB_Buffer::ACCESS_WRITE), 0U);
    EXPECT_EQ(CodeOf([&] { buffer.ToStart(); }), 10U);
    EXPECT_EQ(CodeOf([&] { buffer.RetrieveData(&byte, 1); }), 24U);
    CZRB_FileBuffer noRoom(0);
    EXPECT_EQ(noRoom.AttachFile(&reading, CZRB_Buffer::ACCESS_READ), 0U);
    EXPECT_EQ(CodeOf([&] { noRoom.RetrieveData(&byte, 1); }), 9U);
}

TEST_F(FileBufferTest, RandomChunksRoundTripForAnyBlockSize) {
    std::mt19937 random(9);
    for (unsigned int round = 0; round < 60; ++round) {
        std::string bytes(random() % 3000, '\0'), back(bytes.size(), '\0');
        std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(random()); });
        CZRB_File file;
        ASSERT_EQ(file.Open(PathOf("random").c_str(), 0x7), 0U);
        const unsigned int block = 1 + random() % (round % 2 ? 16 : 1500);
        CZRB_FileBuffer buffer(block);
        buffer.ToStart(); // nothing attached: leaves nothing behind for the writer
        for (const auto access : {CZRB_Buffer::ACCESS_WRITE, CZRB_Buffer::ACCESS_READ}) {
            ASSERT_EQ(buffer.AttachFile(&file, access), 0U);
            for (unsigned int done = 0, count; done < bytes.size(); done += count) {
                count = std::min(static_cast<unsigned int>(bytes.size()) - done,
                                 static_cast<unsigned int>(random() % 40));
                access ? buffer.RetrieveData(&back[done], count)
                       : buffer.AppendData(&bytes[done], count);
            }
            EXPECT_EQ(buffer.GetAbsPosition() + buffer.GetSize() + buffer.IsEnd(),
                      2 * bytes.size() + 1);
            CZRB_FileBuffer copy(buffer); // its own cache
            copy.Abort();
            // Abort drops the bytes waiting in the cache: only whole blocks reached the file.
            access || round % 3 ? buffer.Close() : buffer.Abort();
            bytes.resize(round % 3 ? bytes.size() : bytes.size() / block * block);
            back.resize(bytes.size());
        }
        EXPECT_EQ(Contents(PathOf("random")), bytes);
        EXPECT_EQ(back, bytes);
    }
}
