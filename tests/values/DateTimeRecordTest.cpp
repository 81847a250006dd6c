// Stream records of CZRB_Date and CZRB_Time: the plain day number and millisecond count.
#include "CZRB_Date.h"
#include "CZRB_Exception.h"
#include "CZRB_Time.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

namespace {

// A stream over a byte vector, enough to see the bytes a record consists of.
class CRecordStream : public CZRB_Buffer {
public:
    unsigned __int64 GetAbsPosition() override { return position; }
    void AppendData(void* data, unsigned int count) override {
        CZRB_Buffer::AppendData(data, count);
        const auto* first = static_cast<const unsigned char*>(data);
        bytes.insert(bytes.end(), first, first + count);
        m_size += count;
    }
    void RetrieveData(void* data, unsigned int count) override {
        CZRB_Buffer::RetrieveData(data, count);
        std::memcpy(data, bytes.data() + position, count);
        position += count;
    }
    std::vector<unsigned char> bytes;
    unsigned __int64 position = 0;
};

} // namespace

TEST(DateTimeRecord, DatesAndTimesTravelAsTheirPlainNumbers) {
    CRecordStream stream;
    CZRB_Date date(2000, 1, 1, CZRB_Date::CALENDAR_GREGORIAN), nullDate;
    CZRB_Time time(0, 0, 1, 2), nullTime;
    stream << date << time << nullDate << nullTime;
    const std::vector<unsigned char> expected = {
        0x59, 0x68, 0x25, 0, 0, 0, 0, 0,    0xEA, 0x03, 0,    0,     // 2451545, 1002
        0,    0,    0,    0, 0, 0, 0, 0x80, 0xFF, 0xFF, 0xFF, 0xFF}; // null marker, -1
    EXPECT_EQ(stream.bytes, expected);

    CZRB_Date dates[2];
    CZRB_Time times[2];
    stream >> dates[0] >> times[0] >> dates[1] >> times[1];
    EXPECT_TRUE(dates[0] == date && times[0] == time);
    EXPECT_TRUE(dates[1] == nullDate && dates[1].IsNull() && times[1].IsNull());

    // A short record throws the stream's code 3 and leaves the target as it was.
    stream.position = 20;
    try {
        stream >> dates[0];
        FAIL() << "no exception";
    } catch (const CZRB_Exception& e) {
        EXPECT_EQ(e.code, 3U);
    }
    EXPECT_TRUE(dates[0] == date);
}
