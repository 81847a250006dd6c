#include "CZRB_Buffer.h"
#include "CZRB_String.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <tuple>
#include <vector>

namespace {

// A minimal stream over a byte vector, to see the exact bytes the base class produces.
class CByteStream : public CZRB_Buffer {
public:
    explicit CByteStream(t_Access access = ACCESS_READ_WRITE) { m_access = access; }
    unsigned __int64 GetAbsPosition() override { return position; }
    void ToStart() override { position = 0; }
    void AppendData(void* data, unsigned int count) override {
        CZRB_Buffer::AppendData(data, count);
        const auto* bytes = static_cast<const unsigned char*>(data);
        this->bytes.insert(this->bytes.end(), bytes, bytes + count);
        m_size += count;
    }
    void RetrieveData(void* data, unsigned int count) override {
        CZRB_Buffer::RetrieveData(data, count);
        std::memcpy(data, bytes.data() + position, count);
        position += count;
        UpdateEndFunction();
    }
    std::vector<unsigned char> bytes;
    unsigned __int64 position = 0;
};

} // namespace

TEST(Buffer, PrimitivesAreLittleEndianWhateverTheHost) {
    CByteStream s;
    s << 258U << static_cast<unsigned short>(0x0201) << 1.0 << 1.0f << static_cast<void*>(&s)
      << static_cast<__int64>(-2) << -3 << static_cast<short>(-4) << static_cast<signed char>(-5)
      << 0x0102030405060708ULL << static_cast<unsigned char>(0xAB) << 'z' << int64_t{-6}
      << size_t{7};
    const std::vector<unsigned char> expected = {
        0x02, 0x01, 0x00, 0x00, 0x01, 0x02, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xF0, 0x3F, 0x00,
        0x00, 0x80, 0x3F, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFD, 0xFF, 0xFF, 0xFF,
        0xFC, 0xFF, 0xFB, 0x08, 0x07, 0x06, 0x05, 0x04, 0x03, 0x02, 0x01, 0xAB, 'z',  0xFA, 0xFF,
        0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 7,    0,    0,    0,    0,    0,    0,    0};
    EXPECT_EQ(s.bytes, expected);
    EXPECT_EQ(s.GetSize(), expected.size());

    // Read back in the same order (a pointer is neither written nor read).
    std::tuple<unsigned int, unsigned short, double, float> head;
    std::tuple<__int64, int, short, signed char, unsigned __int64, unsigned char, char, int64_t>
        tail;
    size_t last = 0;
    const auto read = [&s](auto&... values) { (s >> ... >> values); };
    std::apply(read, head);
    s >> static_cast<void*>(nullptr);
    std::apply(read, tail);
    EXPECT_EQ(s.IsEnd(), 0);
    s >> last;
    EXPECT_EQ(s.IsEnd(), 1);
    EXPECT_EQ(head, std::make_tuple(258U, static_cast<unsigned short>(0x0201), 1.0, 1.0f));
    EXPECT_EQ(tail, std::make_tuple(-2LL, -3, short{-4}, static_cast<signed char>(-5),
                                    0x0102030405060708ULL, static_cast<unsigned char>(0xAB), 'z',
                                    int64_t{-6}));
    EXPECT_EQ(last, 7U);
}

TEST(Buffer, AccessAndRangeChecksComeInOrder) {
    CByteStream s, readOnly(CZRB_Buffer::ACCESS_READ), writeOnly(CZRB_Buffer::ACCESS_WRITE);
    s << 0x11223344U << static_cast<unsigned char>(1) << static_cast<unsigned short>(2);
    unsigned __int64 wide = 0;
    char byte = 0;
    EXPECT_EQ(CodeOf([&] { s >> wide; }, &s), 3U); // 7 bytes: an 8-byte read fails whole
    EXPECT_EQ(s.GetAbsPosition(), 0U);
    s << static_cast<unsigned char>(3);
    s >> wide;
    EXPECT_EQ(s.IsEnd(), 1);
    EXPECT_EQ(CodeOf([&] { s >> byte; }, &s), 3U);
    EXPECT_EQ(CodeOf([&] { readOnly << 'x'; }, &readOnly), 23U);
    EXPECT_EQ(CodeOf([&] { writeOnly >> byte; }, &writeOnly), 24U); // before the range check

    CZRB_Buffer base(16);
    EXPECT_EQ(base.GetBlockSize() + base.IsEnd(), 17U);
    EXPECT_EQ(CodeOf([&] { base.ToStart(); }, &base), 8U);
    EXPECT_EQ(CodeOf([&] { base.GetAbsPosition(); }, &base), 8U);
    // A stream that supports GetAbsPosition still gets 8 from the base ToEnd and DeleteAll.
    for (CZRB_Buffer* stream : {&base, static_cast<CZRB_Buffer*>(&s)}) {
        EXPECT_EQ(CodeOf([&] { stream->ToEnd(); }, stream), 8U);
        EXPECT_EQ(CodeOf([&] { stream->DeleteAll(); }, stream), 8U);
    }
    EXPECT_EQ(CodeOf([&] { base << 1; }, &base), 0U);
}

TEST(Buffer, StringRecordKeepsZerosAndChecksTheAnnouncedLength) {
    CByteStream s;
    s << CZRB_String("a\0b", 3) << CZRB_String();
    const std::vector<unsigned char> expected = {3, 0, 0, 0, 'a', 0, 'b', 0, 0, 0, 0};
    EXPECT_EQ(s.bytes, expected);
    CZRB_String first("longer text");
    CZRB_String second("x");
    s >> first >> second;
    EXPECT_EQ(std::string(first.GetStringC(), first.GetLength()), std::string("a\0b", 3));
    EXPECT_EQ(second.GetLength(), 0U);

    CByteStream truncated;
    truncated << 5U << 'a';
    CZRB_String target("keep");
    EXPECT_EQ(CodeOf([&] { truncated >> target; }), 3U);
    EXPECT_EQ(std::string(target.GetStringC()), "keep");
}
