#include "CZRB_Exception.h"
#include "CZRB_MemoryBuffer.h"
#include "CZRB_String.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace {

std::vector<unsigned char> Bytes(unsigned int count, unsigned char first) {
    std::vector<unsigned char> bytes(count);
    for (unsigned int i = 0; i < count; ++i) {
        bytes[i] = static_cast<unsigned char>(first + i);
    }
    return bytes;
}

} // namespace

TEST(MemoryBuffer, BlocksAreChainedEagerlyAndReadBackInOrder) {
    CZRB_MemoryBuffer empty(4);
    empty.ToStart();
    empty.ToEnd();
    EXPECT_EQ(empty.GetAbsPosition() + empty.GetSize() + empty.GetBlockCount(), 0U);
    EXPECT_EQ(empty.IsEnd(), 1);
    unsigned char byte = 0;
    EXPECT_EQ(CodeOf([&] { empty.RetrieveData(&byte, 1); }), 3U);

    for (unsigned int count : {3U, 4U, 8U, 10U}) {
        CZRB_MemoryBuffer buffer(4);
        std::vector<unsigned char> written = Bytes(count, 1);
        buffer.AppendData(written.data(), count);
        EXPECT_EQ(buffer.GetBlockCount(), count / 4 + 1) << count; // a full block gets a successor
        EXPECT_EQ(buffer.GetAbsPosition(), count);
        EXPECT_EQ(buffer.GetSize(), count);
        EXPECT_EQ(buffer.IsEnd(), 1);
        buffer.ToStart();
        EXPECT_EQ(buffer.IsEnd(), 0);
        std::vector<unsigned char> read(count);
        buffer.RetrieveData(read.data(), count);
        EXPECT_EQ(read, written);
        EXPECT_EQ(buffer.IsEnd(), 1);
        EXPECT_EQ(CodeOf([&] { buffer.RetrieveData(&byte, 1); }), 3U);
        buffer.DeleteAll();
        EXPECT_EQ(buffer.GetBlockCount() + buffer.GetSize() + buffer.GetAbsPosition(), 0U);
    }
    CZRB_MemoryBuffer zero(0);
    EXPECT_EQ(CodeOf([&] { zero.AppendData(&byte, 1); }), 9U);
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

TEST(MemoryBuffer, RandomRecordsRoundTripForAnyBlockSizeAndInCopies) {
    std::mt19937 random(3);
    for (unsigned int blockSize = 1; blockSize <= 9; ++blockSize) {
        CZRB_MemoryBuffer buffer(blockSize);
        std::vector<unsigned long long> values;
        std::vector<std::string> texts;
        for (int i = 0; i < 60; ++i) {
            values.push_back((static_cast<unsigned long long>(random()) << 32) | random());
            texts.emplace_back(random() % 12, static_cast<char>(random() % 3)); // zero bytes too
            buffer << values.back() << static_cast<unsigned short>(values.back())
                   << CZRB_String(texts.back().data(), static_cast<unsigned>(texts.back().size()))
                   << static_cast<double>(i) / 7;
        }
        buffer.ToStart();
        CZRB_MemoryBuffer copy(buffer), assigned(2);
        assigned = buffer;
        for (CZRB_MemoryBuffer* stream : {&buffer, &copy, &assigned}) {
            for (int i = 0; i < 60; ++i) {
                unsigned long long value = 0;
                unsigned short low = 0;
                CZRB_String text("x");
                double fraction = 0;
                *stream >> value >> low >> text >> fraction;
                ASSERT_EQ(value, values[i]);
                ASSERT_EQ(low, static_cast<unsigned short>(values[i]));
                ASSERT_EQ(std::string(text.GetStringC(), text.GetLength()), texts[i]);
                ASSERT_EQ(fraction, static_cast<double>(i) / 7);
            }
            EXPECT_EQ(stream->IsEnd(), 1);
        }
        assigned = CZRB_MemoryBuffer(5);
        EXPECT_EQ(assigned.GetBlockCount(), 0U);
        EXPECT_EQ(assigned.GetBlockSize(), 5U);
    }
}

TEST(MemoryBuffer, RecordsOfMixedSizesAcrossBlockBoundaries) {
    std::mt19937 random(17);
    for (unsigned int blockSize : {1U, 3U, 4U, 7U, 64U}) {
        CZRB_MemoryBuffer buffer(blockSize);
        std::vector<unsigned char> model;
        for (int i = 0; i < 300; ++i) {
            const unsigned int count = random() % (3 * blockSize + 2); // none up to 3 blocks + 1
            const std::vector<unsigned char> record =
                Bytes(count, static_cast<unsigned char>(random()));
            buffer.AppendData(const_cast<unsigned char*>(record.data()), count);
            model.insert(model.end(), record.begin(), record.end());
            ASSERT_EQ(buffer.GetAbsPosition(), model.size()) << blockSize << " record " << i;
            ASSERT_EQ(buffer.GetSize(), model.size());
            ASSERT_EQ(buffer.GetBlockCount(), model.size() / blockSize + 1); // eager successor
        }
        buffer.ToStart();
        std::vector<unsigned char> read; // read back in other pieces than written
        while (read.size() < model.size()) {
            const auto count = static_cast<unsigned int>(
                std::min<size_t>(random() % (2 * blockSize + 2), model.size() - read.size()));
            std::vector<unsigned char> piece(count);
            buffer.RetrieveData(piece.data(), count);
            read.insert(read.end(), piece.begin(), piece.end());
            ASSERT_EQ(buffer.GetAbsPosition(), read.size()) << blockSize;
            ASSERT_EQ(buffer.IsEnd(), read.size() == model.size() ? 1 : 0);
        }
        EXPECT_EQ(read, model) << blockSize;
    }
}
