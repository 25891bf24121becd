// How the host's networks are put together from its interfaces: every case is judged by the texts
// of the networks, octet by octet.

#include "wizard/base/relay_networks.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/support/case_name.h"
#include "tests/wizard/fake_interfaces.h"
#include "tests/wizard/replaced_calls.h"
#include "wizard/base/heap_text.h"

namespace {

using Networks = std::vector<std::string>;

struct FreeRelayNetworks {
    void operator()(relay_network* list) const { free_relay_networks(list); }
};

class RelayNetworks : public testing::Test {
  protected:
    ~RelayNetworks() override { replaced_calls = {}; }

    // The networks of a host with these interfaces, as "network/netmask".
    Networks of(const std::vector<FakeInterface>& host) {
        fake_interfaces(host);
        list.reset(relay_networks(&count));
        Networks networks;
        for (int i = 0; i < count; ++i)
            networks.push_back(std::string(list.get()[i].network) + "/" + list.get()[i].netmask);
        return networks;
    }

    std::unique_ptr<relay_network, FreeRelayNetworks> list;
    int count = -1;
};

struct Host {
    const char* name;
    std::vector<FakeInterface> interfaces;
    Networks networks;
};

constexpr const char* byte_1 = "255.0.0.0";
constexpr const char* bytes_2 = "255.255.0.0";
constexpr const char* bytes_3 = "255.255.255.0";

// clang-format off
const Host hosts[] = {
    {"without_interfaces", {}, {}},
    {"with_loopback", {{"lo", "127.0.0.1", byte_1}}, {"127.0.0.0/255.0.0.0"}},
    {"with_an_address_under_its_netmask",
     {{"a", "172.20.99.130", "255.255.255.192"}}, {"172.20.99.128/255.255.255.192"}},
    {"with_an_interface_that_is_down",
     {{"a", "10.0.0.1", byte_1}, {"b", "172.16.0.1", bytes_2, false}}, {"10.0.0.0/255.0.0.0"}},
    {"with_several_in_their_order",
     {{"a", "172.16.0.1", bytes_2}, {"b", "10.0.0.1", byte_1}, {"c", "192.168.1.1", bytes_3}},
     {"172.16.0.0/255.255.0.0", "10.0.0.0/255.0.0.0", "192.168.1.0/255.255.255.0"}},
    {"with_two_in_one_network",
     {{"a", "192.168.1.5", bytes_3}, {"b", "192.168.1.6", bytes_3}}, {"192.168.1.0/255.255.255.0"}},
    {"with_one_network_and_two_netmasks",
     {{"a", "10.0.0.5", bytes_2}, {"b", "10.0.0.6", byte_1}}, {"10.0.0.0/255.255.0.0"}},
    {"with_a_wider_network_after_a_narrower_one",
     {{"a", "192.168.1.5", bytes_3}, {"b", "192.168.7.9", bytes_2}}, {"192.168.0.0/255.255.0.0"}},
    {"with_a_wider_network_before_a_narrower_one",
     {{"a", "192.168.7.9", bytes_2}, {"b", "192.168.1.5", bytes_3}},
     {"192.168.0.0/255.255.0.0", "192.168.1.0/255.255.255.0"}},
    {"where_the_third_octet_decides",
     {{"a", "172.16.3.1", bytes_3}, {"b", "172.16.9.1", bytes_2}}, {"172.16.0.0/255.255.0.0"}},
    {"with_different_first_octets",
     {{"a", "10.1.2.3", byte_1}, {"b", "192.168.1.1", bytes_3}},
     {"10.0.0.0/255.0.0.0", "192.168.1.0/255.255.255.0"}},
    {"whose_first_octet_of_zero_drops_nothing",
     {{"a", "10.1.2.3", byte_1}, {"b", "192.168.1.1", "0.0.0.0"}},
     {"10.0.0.0/255.0.0.0", "0.0.0.0/0.0.0.0"}},
    {"with_one_netmask_whatever_the_octets",
     {{"a", "10.1.0.1", bytes_2}, {"b", "10.0.0.1", bytes_2}},
     {"10.1.0.0/255.255.0.0", "10.0.0.0/255.255.0.0"}},
    {"with_two_different_octets_that_are_not_zero",
     {{"a", "172.16.1.1", bytes_3}, {"b", "172.17.1.1", bytes_2}},
     {"172.16.1.0/255.255.255.0", "172.17.0.0/255.255.0.0"}},
    // 10.8.0.0/255.248.0.0 does contain the other, but its second octet is not 0.
    {"whose_octets_are_compared_whole_and_not_bit_by_bit",
     {{"a", "10.9.1.1", bytes_3}, {"b", "10.10.0.1", "255.248.0.0"}},
     {"10.9.1.0/255.255.255.0", "10.8.0.0/255.248.0.0"}},
    {"whose_last_octet_of_zero_is_not_looked_at",
     {{"a", "192.168.1.5", "255.255.255.252"}, {"b", "192.168.1.9", bytes_3}},
     {"192.168.1.4/255.255.255.252", "192.168.1.0/255.255.255.0"}},
    {"with_a_wider_network_after_several_narrower_ones",
     {{"a", "10.1.1.1", bytes_3}, {"b", "192.168.1.1", bytes_3}, {"c", "10.2.1.1", bytes_2},
      {"d", "10.3.1.1", byte_1}},
     {"192.168.1.0/255.255.255.0", "10.0.0.0/255.0.0.0"}},
    {"where_one_that_was_dropped_still_makes_a_later_one_its_duplicate",
     {{"a", "192.168.1.5", bytes_3}, {"b", "192.168.7.9", bytes_2}, {"c", "192.168.1.6", bytes_3}},
     {"192.168.0.0/255.255.0.0"}},
    {"whose_duplicate_still_drops_narrower_networks_before_it",
     {{"a", "10.0.0.1", bytes_3}, {"b", "10.7.0.1", bytes_3}, {"c", "10.8.0.1", byte_1}},
     {"10.0.0.0/255.255.255.0"}},
};
// clang-format on

class OnHost : public RelayNetworks, public testing::WithParamInterface<Host> {};

TEST_P(OnHost, are_the_distinct_ones_and_a_null_record) {
    EXPECT_EQ(of(GetParam().interfaces), GetParam().networks);
    for (int i = 0; i < relay_list_size; ++i) {
        EXPECT_EQ(list.get()[i].network == nullptr, i >= count) << i;
        EXPECT_EQ(list.get()[i].covered, 0);
    }
}

INSTANTIATE_TEST_SUITE_P(RelayNetworks, OnHost, testing::ValuesIn(hosts), CaseName());

TEST_F(RelayNetworks, are_at_most_as_many_as_the_interfaces_and_at_least_none) {
    EXPECT_EQ(of(many_interfaces(40)).back(), "10.28.0.0/255.255.0.0");
    EXPECT_EQ(count, 29);
    EXPECT_EQ(list.get()[29].network, nullptr);
    fake_failing_interface_list();
    list.reset(relay_networks(&count));
    EXPECT_EQ(count, 0);
    EXPECT_EQ(list.get()[0].network, nullptr);
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
