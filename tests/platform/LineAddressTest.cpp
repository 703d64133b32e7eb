#include "platform/LineAddress.h"

#include <gtest/gtest.h>

namespace kelvora {

TEST(LineAddress, IsAPrefixAHostAndAPort)
{
    using enum LineProtocol;
    const auto check = [&](const char* text, const LineAddress& address) {
        EXPECT_EQ(ParseLineAddress(text), address) << text;
    };
    check("tcp:zone-9.shop:4000", {Detected, "zone-9.shop", 4000});
    check("TCP:10.0.0.7:1", {Detected, "10.0.0.7", 1});
    check("rfc2217:[::1]:65535", {Rfc2217, "::1", 65535});
    check("raw:[fe80::1%eth0]:23", {Raw, "fe80::1%eth0", 23});
    check("bridge:a:2", {Bridge, "a", 2});
    for (const char* text : {"", "/dev/ttyS0", "tcp:", "tcp:a", "tcp:a:", "tcp::4000", "tcp:a:0",
                             "tcp:a:65536", "tcp:a:+1", "tcp:a:1 ", "tcp: a:1", "tcp:a/b:1", "tcp:::1:4000",
                             "tcp:[]:1", "tcp:[a]:1", "tcp:[::1:1", "tcp:-a:1", "udp:a:1", "tcp:a\r:1"})
        EXPECT_FALSE(ParseLineAddress(text)) << text;
    EXPECT_TRUE(ParseLineAddress("raw:" + std::string(253, 'a') + ":1"));
    EXPECT_FALSE(ParseLineAddress("raw:" + std::string(254, 'a') + ":1"));
    EXPECT_TRUE(IsBridge("bridge:a:2"));
    EXPECT_FALSE(IsBridge("raw:a:2") || IsBridge("/dev/bridge:a:2"));
}

}  // namespace kelvora
