// Stream records (the plain day number and millisecond count) and the named containers.
#include "CZRB_Date.h"
#include "CZRB_Exception.h"
#include "CZRB_MemoryBuffer.h"
#include "CZRB_Time.h"

#include <gtest/gtest.h>

TEST(DateTimeStorage, DatesAndTimesTravelAsTheirPlainNumbers) {
    CZRB_MemoryBuffer stream(5); // records cross block boundaries
    CZRB_Date date(2000, 1, 1, CZRB_Date::CALENDAR_GREGORIAN), nullDate;
    CZRB_Time time(0, 0, 1, 2), nullTime;
    stream << date << time << nullDate << nullTime;
    EXPECT_EQ(stream.GetSize(), 24U);
    long long numbers[2];
    int counts[2];
    stream.ToStart();
    stream >> numbers[0] >> counts[0] >> numbers[1] >> counts[1];
    EXPECT_TRUE(numbers[0] == 2451545 && counts[0] == 1002);
    EXPECT_TRUE(numbers[1] == -9223372036854775807LL - 1 && counts[1] == -1);

    CZRB_Date dates[2];
    CZRB_Time times[2];
    stream.ToStart();
    stream >> dates[0] >> times[0] >> dates[1] >> times[1];
    EXPECT_TRUE(dates[0] == date && times[0] == time);
    EXPECT_TRUE(dates[1] == nullDate && dates[1].IsNull() && times[1].IsNull());
    EXPECT_THROW(stream >> dates[0], CZRB_Exception); // nothing left: the date stays as it was
    EXPECT_TRUE(dates[0] == date);
}

TEST(DateTimeStorage, NamedContainersSortByTheirElementOrder) {
    const CZRB_Date::t_Calendar G = CZRB_Date::CALENDAR_GREGORIAN;
    CZRB_Date dates[] = {CZRB_Date(2001, 5, 1, G), CZRB_Date(), CZRB_Date(1999, 1, 1, G)};
    CZRB_DateVector vector(dates, 3);
    EXPECT_TRUE(vector.Sort(1)[0].IsNull() && vector[1] == dates[2] && vector[2] == dates[0]);
    CZRB_DateList list(dates, 3);
    EXPECT_TRUE(list.Sort(0)[0] == dates[0] && list[1] == dates[2] && list[2].IsNull());

    CZRB_Time times[] = {CZRB_Time(12, 0, 0, 0), CZRB_Time(1, 0, 0, 0), CZRB_Time()};
    CZRB_TimeVector timeVector(times, 3);
    EXPECT_TRUE(timeVector.Sort(0)[0] == times[0] && timeVector[2].IsNull());
    CZRB_TimeList timeList(times, 3);
    EXPECT_TRUE(timeList.Sort(1)[0].IsNull() && timeList[2] == times[0]);
}
