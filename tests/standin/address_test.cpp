// Words, numbers and addresses.
#include "standin/address.h"

#include <gtest/gtest.h>

#include "standin/text.h"
#include "tests/support/cli_client.h"

namespace {

TEST(Text, TheRestOfALineKeepsItsSpaces) {
    EXPECT_EQ(rest_from_word(" set  services ( a  b )", 2), "( a  b )");
    EXPECT_EQ(rest_from_word("one two", 0), "one two");
    EXPECT_EQ(rest_from_word("one two", 2), "");
    EXPECT_EQ(rest_from_word("", 0), "");
}

TEST(Text, AWholeNumberIsDigitsOnlyAndWithinItsBounds) {
    long value = -7;
    for (const char* text : {"", "0", "65536", "-1", "+1", "1x", " 1", "99999999999999999999"})
        EXPECT_FALSE(parse_whole(text, 1, 65535, value)) << text;
    EXPECT_FALSE(parse_whole("-1", -5, 5, value));
    EXPECT_EQ(value, -7);
    EXPECT_TRUE(parse_whole("65535", 1, 65535, value));
    EXPECT_EQ(value, 65535);
}

TEST(Address, IsSplitAtTheFirstColon) {
    Address address;
    ASSERT_TRUE(parse_address("localhost:9091", 1, address));
    EXPECT_EQ(address.host, "localhost");
    EXPECT_EQ(address.port, 9091);
    for (const char* text : {"", "localhost", ":25", "localhost:", "localhost:0", "localhost:65536",
                             "localhost:2x", "localhost:25:26"})
        EXPECT_FALSE(parse_address(text, 1, address)) << text;
    EXPECT_TRUE(parse_address("localhost:0", 0, address)) << "port 0 where it is allowed";
}

TEST(Address, OfAListenerIsADottedAddressAndAPort) {
    EXPECT_TRUE(is_listener_address("0.0.0.0:1"));
    EXPECT_TRUE(is_listener_address("192.168.1.255:65535"));
    for (const char* text : {"localhost:25", "256.0.0.1:25", "1.2.3:25", "1.2.3.4:0", "1.2.3.4"})
        EXPECT_FALSE(is_listener_address(text)) << text;
}

TEST(Address, TwoListenersCollideOnOnePortOfOneHostOrOfAll) {
    EXPECT_TRUE(listeners_collide("127.0.0.1:25", "127.0.0.1:25"));
    EXPECT_TRUE(listeners_collide("0.0.0.0:25", "127.0.0.1:25"));
    EXPECT_FALSE(listeners_collide("127.0.0.1:25", "127.0.0.2:25"));
    EXPECT_FALSE(listeners_collide("0.0.0.0:25", "0.0.0.0:26"));
}

TEST(Address, IsInUseWhileAProgramListensThereButNotByConnectionsThatHaveJustEnded) {
    std::string address = "127.0.0.1:0";
    std::string problem;
    Descriptor listener = open_listener(address, problem);
    ASSERT_TRUE(listener.isOpen()) << problem;
    EXPECT_TRUE(address_is_in_use(address));
    EXPECT_FALSE(open_listener(address, problem).isOpen());
    EXPECT_EQ(problem, "can't listen at " + address + ": Address already in use");
    CliClient client(std::stoi(address.substr(address.find(':') + 1)));
    accept_client(listener).close();
    EXPECT_EQ(client.readToEnd(), "");
    listener.close();
    EXPECT_FALSE(address_is_in_use(address));
    EXPECT_FALSE(address_is_in_use("192.0.2.1:25")) << "no address of this host";
}

}  // namespace
