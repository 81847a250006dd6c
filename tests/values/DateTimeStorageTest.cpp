// Stream records (the plain day number and millisecond count) and the named containers.
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

TEST(DateTimeStorage, DatesAndTimesTravelAsTheirPlainNumbers) {
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

    // A short record throws in the stream and leaves the target as it was.
    stream.position = 20;
    EXPECT_THROW(stream >> dates[0], CZRB_Exception);
    EXPECT_TRUE(dates[0] == date);
}

TEST(DateTimeStorage, NamedContainersSortByTheirElementOrder) {
    const CZRB_Date::t_Calendar G = CZRB_Date::CALENDAR_GREGORIAN;
    CZRB_Date dates[] = {CZRB_Date(2001, 5, 1, G), CZRB_Date(), CZRB_Date(1999, 1, 1, G)};
    CZRB_DateVector vector(dates, 3);
    EXPECT_TRUE(vector.Sort(1)[0].IsNull() && vector[1] == dates[2] && vector[2] == dates[0]);
    CZRB_DateList list(dates, 3);
    EXPECT_TRUE(list.Sort(0)[0] == dates[0] && list[1] == dates[2] && list[2].IsNull());
    CZRB_DateVector copy;
    copy = static_cast<CZRB_Vector<CZRB_Date>&>(vector);
    EXPECT_TRUE(copy == vector);
    EXPECT_THROW(CZRB_DateVector().Sort(1), CZRB_Exception); // code 2 on an empty vector

    CZRB_Time times[] = {CZRB_Time(12, 0, 0, 0), CZRB_Time(1, 0, 0, 0), CZRB_Time()};
    CZRB_TimeVector timeVector(times, 3);
    EXPECT_TRUE(timeVector.Sort(0)[0] == times[0] && timeVector[2].IsNull());
    CZRB_TimeList timeList(3, times[1]);
    timeList = CZRB_TimeList(times, 3);
    EXPECT_TRUE(timeList.Sort(1)[0].IsNull() && timeList[2] == times[0]);
}
