// The host's interfaces, and how its networks are put together from them: judged by the texts of
// the networks, octet by octet.

#include <gtest/gtest.h>
#include <malloc.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/descriptor.h"
#include "tests/wizard/fake_host.h"
#include "wizard/base/heap_text.h"
#include "wizard/base/relay_networks.h"
#include "wizard/base/tel_help.h"

namespace {

using Texts = std::vector<std::string>;

struct Host {
    const char* name;
    std::vector<FakeInterface> interfaces;
    Texts expected;
};

class Interfaces : public testing::Test {
  protected:
    ~Interfaces() override { fake_host = {}; }

    // Asks for the table; its entries after the first one as "name address netmask".
    Texts ask() {
        table.reset(interfaces(&count));
        Texts entries;
        for (int i = 1; table != nullptr && i < count; ++i) {
            const interf_addr& entry = table.get()[i];
            entries.push_back(std::string(entry.name) + " " + entry.address + " " + entry.netmask);
        }
        return entries;
    }

    std::unique_ptr<interf_addr, FreeHeap> table;
    int count = -1;
};

const Host hosts_with_interfaces[] = {
    {"none", {}, {}},
    {"in the kernel's order",
     {{"lo", "127.0.0.1", "255.0.0.0"},
      {"fifteen-letters", "192.168.7.9", "255.255.0.0"},
      {"eth0", "10.9.8.7", "255.255.255.252"}},
     {"lo 127.0.0.1 255.0.0.0", "fifteen-letters 192.168.7.9 255.255.0.0",
      "eth0 10.9.8.7 255.255.255.252"}},
    {"but those that are down",
     {{"eth0", "10.0.0.1", "255.0.0.0", false}, {"eth1", "10.1.0.1", "255.0.0.0"}},
     {"eth1 10.1.0.1 255.0.0.0"}},
    {"but those of another address family",
     {{"eth0", "10.0.0.1", "255.0.0.0", true, AF_PACKET}, {"eth1", "10.1.0.1", "255.0.0.0"}},
     {"eth1 10.1.0.1 255.0.0.0"}},
    {"but those that cannot be asked about",
     {{"bad0", "10.0.0.1", "255.0.0.0", true, AF_INET, SIOCGIFADDR},
      {"eth0", "10.1.0.1", "255.0.0.0"},
      {"bad1", "10.2.0.1", "255.0.0.0", true, AF_INET, SIOCGIFFLAGS},
      {"eth1", "10.3.0.1", "255.0.0.0"},
      {"bad2", "10.4.0.1", "255.0.0.0", true, AF_INET, SIOCGIFNETMASK}},
     {"eth0 10.1.0.1 255.0.0.0", "eth1 10.3.0.1 255.0.0.0"}},
};

TEST_F(Interfaces, are_listed_after_the_entry_for_all_and_the_rest_is_empty) {
    for (const Host& host : hosts_with_interfaces) {
        SCOPED_TRACE(host.name);
        fake_host.interfaces = host.interfaces;
        EXPECT_EQ(ask(), host.expected);
        EXPECT_STREQ(table.get()->name, "all");
        EXPECT_STREQ(table.get()->address, "0.0.0.0");
        EXPECT_STREQ(table.get()->netmask, "");
        EXPECT_GE(malloc_usable_size(table.get()), 30 * 3 * 256U);
        const interf_addr empty = {};
        for (int i = count; i < interface_table_size; ++i)
            EXPECT_EQ(std::memcmp(&table.get()[i], &empty, sizeof empty), 0) << i;
    }
}

TEST_F(Interfaces, are_looked_for_among_700_that_are_down) {
    fake_host.interfaces.assign(700, {"down", "10.0.0.1", "255.0.0.0", false});
    fake_host.interfaces.push_back({"eth0", "10.1.0.1", "255.0.0.0"});
    EXPECT_EQ(ask(), Texts{"eth0 10.1.0.1 255.0.0.0"});
}

TEST_F(Interfaces, are_at_most_29) {
    for (int i = 0; i < 35; ++i) {
        const std::string number = std::to_string(i);
        fake_host.interfaces.push_back({"fake" + number, "10." + number + ".0.1", "255.255.0.0"});
        EXPECT_EQ(ask().size(), std::min<size_t>(fake_host.interfaces.size(), 29));
    }
    EXPECT_EQ(ask().back(), "fake28 10.28.0.1 255.255.0.0");
}

TEST_F(Interfaces, that_cannot_be_had_give_null_and_no_count_is_stored) {
    const auto lowest_free = [] { return Descriptor(checked(dup(STDIN_FILENO), "dup")).get(); };
    const int free_before = lowest_free();
    rlimit before = {};
    getrlimit(RLIMIT_NOFILE, &before);
    const rlimit none = {0, before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
    EXPECT_EQ(interfaces(&count), nullptr);
    setrlimit(RLIMIT_NOFILE, &before);
    fake_host.interface_list_fails = true;
    EXPECT_EQ(interfaces(&count), nullptr);
    EXPECT_EQ(count, -1);
    fake_host.interface_list_fails = false;
    ask();
    EXPECT_EQ(lowest_free(), free_before) << "all sockets are closed again";
}

constexpr const char* byte_1 = "255.0.0.0";
constexpr const char* bytes_2 = "255.255.0.0";
constexpr const char* bytes_3 = "255.255.255.0";

// clang-format off
const Host hosts_with_networks[] = {
    {"none", {}, {}},
    {"an address under its netmask",
     {{"a", "172.20.99.130", "255.255.255.192"}}, {"172.20.99.128/255.255.255.192"}},
    {"several in their order",
     {{"a", "172.16.0.1", bytes_2}, {"b", "10.0.0.1", byte_1}, {"c", "192.168.1.1", bytes_3}},
     {"172.16.0.0/255.255.0.0", "10.0.0.0/255.0.0.0", "192.168.1.0/255.255.255.0"}},
    {"two in one network",
     {{"a", "192.168.1.5", bytes_3}, {"b", "192.168.1.6", bytes_3}}, {"192.168.1.0/255.255.255.0"}},
    {"one network and two netmasks",
     {{"a", "10.0.0.5", bytes_2}, {"b", "10.0.0.6", byte_1}}, {"10.0.0.0/255.255.0.0"}},
    {"a wider network after a narrower one",
     {{"a", "192.168.1.5", bytes_3}, {"b", "192.168.7.9", bytes_2}}, {"192.168.0.0/255.255.0.0"}},
    {"a wider network before a narrower one",
     {{"a", "192.168.7.9", bytes_2}, {"b", "192.168.1.5", bytes_3}},
     {"192.168.0.0/255.255.0.0", "192.168.1.0/255.255.255.0"}},
    {"a first octet of zero, which drops nothing",
     {{"a", "10.1.2.3", byte_1}, {"b", "192.168.1.1", "0.0.0.0"}},
     {"10.0.0.0/255.0.0.0", "0.0.0.0/0.0.0.0"}},
    {"one netmask, whatever the octets",
     {{"a", "10.1.0.1", bytes_2}, {"b", "10.0.0.1", bytes_2}},
     {"10.1.0.0/255.255.0.0", "10.0.0.0/255.255.0.0"}},
    {"two different octets that are not zero",
     {{"a", "172.16.1.1", bytes_3}, {"b", "172.17.1.1", bytes_2}},
     {"172.16.1.0/255.255.255.0", "172.17.0.0/255.255.0.0"}},
    {"a wider network that does contain the other, but by bits: its second octet is not 0",
     {{"a", "10.9.1.1", bytes_3}, {"b", "10.10.0.1", "255.248.0.0"}},
     {"10.9.1.0/255.255.255.0", "10.8.0.0/255.248.0.0"}},
    {"a last octet of zero, which is not looked at",
     {{"a", "192.168.1.5", "255.255.255.252"}, {"b", "192.168.1.9", bytes_3}},
     {"192.168.1.4/255.255.255.252", "192.168.1.0/255.255.255.0"}},
    {"a wider network after several narrower ones",
     {{"a", "10.1.1.1", bytes_3}, {"b", "192.168.1.1", bytes_3}, {"c", "10.2.1.1", bytes_2},
      {"d", "10.3.1.1", byte_1}},
     {"192.168.1.0/255.255.255.0", "10.0.0.0/255.0.0.0"}},
    {"one that was dropped, but still makes a later one its duplicate",
     {{"a", "192.168.1.5", bytes_3}, {"b", "192.168.7.9", bytes_2}, {"c", "192.168.1.6", bytes_3}},
     {"192.168.0.0/255.255.0.0"}},
    {"a duplicate that still drops narrower networks before it",
     {{"a", "10.0.0.1", bytes_3}, {"b", "10.7.0.1", bytes_3}, {"c", "10.8.0.1", byte_1}},
     {"10.0.0.0/255.255.255.0"}},
};
// clang-format on

TEST_F(Interfaces, have_distinct_networks_in_a_list_that_ends_in_null_records) {
    for (const Host& host : hosts_with_networks) {
        SCOPED_TRACE(host.name);
        fake_host.interfaces = host.interfaces;
        const std::unique_ptr<relay_network, decltype(&free_relay_networks)> list(
            relay_networks(&count), free_relay_networks);
        Texts networks;
        for (int i = 0; i < relay_list_size; ++i) {
            const relay_network& record = list.get()[i];
            EXPECT_EQ(record.network == nullptr, i >= count) << i;
            EXPECT_EQ(record.covered, 0);
            if (i < count) networks.push_back(std::string(record.network) + "/" + record.netmask);
        }
        EXPECT_EQ(networks, host.expected);
    }
}

TEST(OctetAt, reads_from_a_position_up_to_the_next_dot_or_the_end) {
    const auto octet = [](const char* dotted, int position) {
        return std::string(HeapText(octet_at(dotted, position)).get(), 5);
    };
    EXPECT_EQ(octet("192.168.7.10", 0), std::string("192\0\0", 5));
    EXPECT_EQ(octet("192.168.7.10", 8), std::string("7\0\0\0\0", 5));
    EXPECT_EQ(octet("192.168.7.10", 10), std::string("10\0\0\0", 5));
    EXPECT_EQ(octet("192.168.7.10", 1), std::string("92\0\0\0", 5));
    EXPECT_EQ(octet("12345", 0), std::string("1234\0", 5));
    for (const int position : {3, 12, 13, 1000})
        EXPECT_EQ(octet("192.168.7.10", position), std::string(5, '\0')) << position;
}

}  // namespace
