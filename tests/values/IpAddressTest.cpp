#include "CZRB_Exception.h"
#include "CZRB_IpAddress.h"
#include "CZRB_MemoryBuffer.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {
std::string Text(const CZRB_IpAddress& address) {
    return address.ToString().GetStringC();
}
} // namespace

TEST(IpAddress, ParsingIsDecimalAndCountsFieldsExactly) {
    // Each text and its printed form, "" for an invalid address.
    const std::pair<const char*, const char*> cases[] = {
        {"192.168.0.1", "192.168.0.1"},
        {"1.2.3", ""},
        {"1.2.3.4.5", ""},
        {"300.1.1.1", "44.1.1.1"},
        {"a.b.c.d", "0.0.0.0"},
        {"1..3.4", "1.0.3.4"},
        {"1.2.3.4.", "1.2.3.4"}, // a trailing separator adds no field
        {"", ""},
        {"0:0:0:0:0:0:0:1", "0000:0000:0000:0000:0000:0000:0000:0001"},
        {"fe80:0:0:0:0:0:0:1", "0000:0000:0000:0000:0000:0000:0000:0001"},
        {"65536:1:2:3:4:5:6:65535", "0000:0001:0002:0003:0004:0005:0006:FFFF"},
        {"::1", ""},
        {"1.2.3.4:5", ""}, // a colon anywhere means IPv6
    };
    for (const auto& [text, printed] : cases) {
        EXPECT_EQ(Text(CZRB_IpAddress(CZRB_String(text))), printed) << text;
    }
    CZRB_IpAddress address;
    address = CZRB_String("10.0.0.1");
    EXPECT_EQ(Text(address), "10.0.0.1");
    address = CZRB_String("bad");
    EXPECT_EQ(Text(address), "");

    // Printed IPv6 groups are hexadecimal, parsed ones decimal: only groups below 10 survive.
    const CZRB_IpAddress small(CZRB_String("1:2:3:4:5:6:7:9"));
    EXPECT_TRUE(CZRB_IpAddress(small.ToString()) == small);
    const CZRB_IpAddress ten(CZRB_String("10:0:0:0:0:0:0:0"));
    EXPECT_TRUE(CZRB_IpAddress(ten.ToString()) != ten);
}

TEST(IpAddress, EqualityAndDigits) {
    EXPECT_TRUE(CZRB_IpAddress() == CZRB_IpAddress());
    EXPECT_TRUE(CZRB_IpAddress(CZRB_String("0.0.0.0")) != CZRB_IpAddress());
    EXPECT_TRUE(CZRB_IpAddress(CZRB_String("1.2.3.4")) != CZRB_IpAddress(CZRB_String("1.2.3.5")));
    EXPECT_TRUE(CZRB_IpAddress(CZRB_String("0:0:0:0:0:0:0:0")) !=
                CZRB_IpAddress(CZRB_String("0.0.0.0")));

    CZRB_IpAddress v6(CZRB_String("4660:0:0:0:0:0:0:1")); // first group 0x1234
    EXPECT_EQ(v6.GetDigit(0), 0x34);
    EXPECT_EQ(v6.GetDigit(8), 0);
    v6.SetDigit(8, 5);
    v6.SetDigit(7, 0xAB);
    EXPECT_EQ(Text(v6), "1234:0000:0000:0000:0000:0000:0000:00AB");
    EXPECT_EQ(CZRB_IpAddress().GetDigit(0), 0);
}

TEST(IpAddress, StreamRecord) {
    CZRB_MemoryBuffer buffer(16);
    CZRB_IpAddress v4(CZRB_String("192.168.0.1"));
    CZRB_IpAddress v6(CZRB_String("1:2:3:4:5:6:7:65535"));
    CZRB_IpAddress invalid;
    buffer << v4 << v6 << invalid;
    EXPECT_EQ(buffer.GetSize(), (2 + 4 + 16) + (2 + 4 + 32) + (2 + 4ULL));
    buffer.ToStart();
    CZRB_IpAddress a, b, c(v4);
    buffer >> a >> b >> c;
    EXPECT_TRUE(a == v4 && b == v6 && c == invalid);
    EXPECT_EQ(buffer.GetSize() - buffer.GetAbsPosition(), 4U); // the invalid count stays unread

    CZRB_MemoryBuffer bad(16);
    bad << static_cast<unsigned short>(7) << 0U;
    bad.ToStart();
    EXPECT_EQ(CodeOf([&] { bad >> a; }), 32U);
    // A count announcing far more parts than the stream holds fails before any allocation.
    CZRB_MemoryBuffer huge(16);
    huge << static_cast<unsigned short>(1) << 0xFFFFFFFFU << 1U;
    huge.ToStart();
    EXPECT_EQ(CodeOf([&] { huge >> a; }), 3U);
    EXPECT_TRUE(a != CZRB_IpAddress() && a.GetDigit(0) == 0); // version set, no parts
}

TEST(IpAddress, NamedContainers) {
    CZRB_IpAddress items[2] = {CZRB_IpAddress(CZRB_String("1.1.1.1")),
                               CZRB_IpAddress(CZRB_String("2.2.2.2"))};
    CZRB_IpAddressVector vector(items, 2);
    unsigned int at = 0;
    EXPECT_TRUE(vector.FindToEnd(items[1], &at, 0) && at == 1);
    CZRB_IpAddressList list(items, 2);
    EXPECT_EQ(Text(list[1]), "2.2.2.2");
}
