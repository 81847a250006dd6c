#include "CZRB_MemoryBuffer.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

TEST(MemoryBuffer, AnEmptyBufferAndAZeroBlockSize) {
    CZRB_MemoryBuffer empty(4), zero(0);
    empty.ToStart();
    empty.ToEnd();
    EXPECT_EQ(empty.GetAbsPosition() + empty.GetSize() + empty.GetBlockCount(), 0U);
    EXPECT_EQ(empty.IsEnd(), 1);
    unsigned char byte = 0;
    EXPECT_EQ(CodeOf([&] { empty.RetrieveData(&byte, 1); }, &empty), 3U);
    EXPECT_EQ(CodeOf([&] { zero.AppendData(&byte, 1); }), 9U); // from the new block
}

TEST(MemoryBuffer, ToEndStandsAtTheEndOfTheLastBlocksRoom) {
    CZRB_MemoryBuffer buffer(4);
    unsigned char first[2] = {0xA1, 0xA2};
    unsigned char second[2] = {0xB1, 0xB2};
    buffer.AppendData(first, 2);
    buffer.ToEnd();
    EXPECT_EQ(buffer.GetAbsPosition(), 4U);
    buffer.AppendData(second, 2);
    EXPECT_TRUE(buffer.GetSize() == 4 && buffer.GetBlockCount() == 2 &&
                buffer.GetAbsPosition() == 6);
    buffer.ToStart();
    unsigned char read[4] = {};
    buffer.RetrieveData(read, 4); // the first two bytes, then two never written
    EXPECT_TRUE(read[0] == 0xA1 && read[1] == 0xA2);
    EXPECT_EQ(buffer.IsEnd(), 1);
}

// Records of none up to three blocks and a byte, read back in other pieces from the buffer and
// from a copy and an assigned buffer, which keep their own blocks.
TEST(MemoryBuffer, RecordsOfMixedSizesAcrossBlockBoundariesAndInCopies) {
    std::mt19937 random(17);
    for (unsigned int blockSize : {1U, 3U, 4U, 7U, 64U}) {
        const auto readBack = [&](CZRB_MemoryBuffer& stream, const std::vector<char>& model) {
            std::vector<char> read;
            while (read.size() < model.size()) {
                std::vector<char> piece(
                    std::min<size_t>(random() % (2 * blockSize + 2), model.size() - read.size()));
                stream.RetrieveData(piece.data(), static_cast<unsigned int>(piece.size()));
                read.insert(read.end(), piece.begin(), piece.end());
                ASSERT_EQ(stream.GetAbsPosition(), read.size()) << blockSize;
                ASSERT_EQ(stream.IsEnd(), read.size() == model.size() ? 1 : 0);
            }
            EXPECT_EQ(read, model) << blockSize;
            char byte = 0;
            EXPECT_EQ(CodeOf([&] { stream.RetrieveData(&byte, 1); }, &stream), 3U);
        };
        CZRB_MemoryBuffer buffer(blockSize);
        std::vector<char> model;
        for (int i = 0; i < 300; ++i) {
            std::vector<char> record(random() % (3 * blockSize + 2));
            std::generate(record.begin(), record.end(), [&] { return char(random()); });
            buffer.AppendData(record.data(), static_cast<unsigned int>(record.size()));
            model.insert(model.end(), record.begin(), record.end());
            ASSERT_EQ(buffer.GetAbsPosition(), model.size()) << blockSize << " record " << i;
            ASSERT_EQ(buffer.GetSize(), model.size());
            ASSERT_EQ(buffer.GetBlockCount(), model.size() / blockSize + 1); // eager successor
        }
        buffer.ToStart();
        CZRB_MemoryBuffer copy(buffer), assigned(2);
        assigned = buffer;
        readBack(buffer, model);
        buffer.DeleteAll();
        EXPECT_EQ(buffer.GetBlockCount() + buffer.GetSize() + buffer.GetAbsPosition(), 0U);
        readBack(copy, model);
        readBack(assigned, model);
        assigned = CZRB_MemoryBuffer(5);
        EXPECT_EQ(assigned.GetBlockCount() * 10 + assigned.GetBlockSize(), 5U);
    }
}
