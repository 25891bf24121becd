// How the host's networks are put together from its interfaces: every case is judged by the texts
// of the networks, octet by octet.

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "tests/wizard/fake_interfaces.h"
#include "tests/wizard/replaced_calls.h"
#include "wizard/base/tel_help.h"

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

TEST_F(RelayNetworks, a_network_is_the_address_under_the_netmask) {
    EXPECT_EQ(of({{"eth0", "172.20.99.130", "255.255.255.192"}}),
              Networks{"172.20.99.128/255.255.255.192"});
}

TEST_F(RelayNetworks, loopback_has_one_like_any_interface) {
    EXPECT_EQ(of({{"lo", "127.0.0.1", "255.0.0.0"}}), Networks{"127.0.0.0/255.0.0.0"});
}

TEST_F(RelayNetworks, the_entry_for_all_interfaces_gives_none) {
    EXPECT_EQ(of({}), Networks{});
    EXPECT_EQ(list.get()[0].network, nullptr);
}

TEST_F(RelayNetworks, two_interfaces_in_one_network_give_one_record) {
    EXPECT_EQ(
        of({{"eth0", "192.168.1.5", "255.255.255.0"}, {"eth1", "192.168.1.6", "255.255.255.0"}}),
        Networks{"192.168.1.0/255.255.255.0"});
}

TEST_F(RelayNetworks, the_same_network_with_another_netmask_is_a_duplicate_of_the_first) {
    EXPECT_EQ(of({{"eth0", "10.0.0.5", "255.255.0.0"}, {"eth1", "10.0.0.6", "255.0.0.0"}}),
              Networks{"10.0.0.0/255.255.0.0"});
}

TEST_F(RelayNetworks, a_narrower_network_is_dropped_by_a_wider_one_after_it) {
    EXPECT_EQ(
        of({{"eth0", "192.168.1.5", "255.255.255.0"}, {"eth1", "192.168.7.9", "255.255.0.0"}}),
        Networks{"192.168.0.0/255.255.0.0"});
}

TEST_F(RelayNetworks, a_narrower_network_is_kept_behind_a_wider_one) {
    EXPECT_EQ(
        of({{"eth0", "192.168.7.9", "255.255.0.0"}, {"eth1", "192.168.1.5", "255.255.255.0"}}),
        (Networks{"192.168.0.0/255.255.0.0", "192.168.1.0/255.255.255.0"}));
}

TEST_F(RelayNetworks, networks_with_different_first_octets_are_both_kept) {
    EXPECT_EQ(of({{"eth0", "10.1.2.3", "255.0.0.0"}, {"eth1", "192.168.1.1", "255.255.255.0"}}),
              (Networks{"10.0.0.0/255.0.0.0", "192.168.1.0/255.255.255.0"}));
}

TEST_F(RelayNetworks, a_first_octet_of_zero_drops_nothing) {
    EXPECT_EQ(of({{"eth0", "10.1.2.3", "255.0.0.0"}, {"eth1", "192.168.1.1", "0.0.0.0"}}),
              (Networks{"10.0.0.0/255.0.0.0", "0.0.0.0/0.0.0.0"}));
}

TEST_F(RelayNetworks, networks_with_one_netmask_are_both_kept_whatever_their_octets) {
    EXPECT_EQ(of({{"eth0", "10.1.0.1", "255.255.0.0"}, {"eth1", "10.0.0.1", "255.255.0.0"}}),
              (Networks{"10.1.0.0/255.255.0.0", "10.0.0.0/255.255.0.0"}));
}

TEST_F(RelayNetworks, two_different_octets_that_are_not_zero_keep_both) {
    EXPECT_EQ(of({{"eth0", "172.16.1.1", "255.255.255.0"}, {"eth1", "172.17.1.1", "255.255.0.0"}}),
              (Networks{"172.16.1.0/255.255.255.0", "172.17.0.0/255.255.0.0"}));
}

TEST_F(RelayNetworks, the_third_octet_decides_where_two_are_equal) {
    EXPECT_EQ(of({{"eth0", "172.16.3.1", "255.255.255.0"}, {"eth1", "172.16.9.1", "255.255.0.0"}}),
              Networks{"172.16.0.0/255.255.0.0"});
}

TEST_F(RelayNetworks, octets_are_compared_whole_and_not_bit_by_bit) {
    // 10.8.0.0/255.248.0.0 does contain the other, but its second octet is not 0.
    EXPECT_EQ(of({{"eth0", "10.9.1.1", "255.255.255.0"}, {"eth1", "10.10.0.1", "255.248.0.0"}}),
              (Networks{"10.9.1.0/255.255.255.0", "10.8.0.0/255.248.0.0"}));
}

TEST_F(RelayNetworks, a_last_octet_of_zero_is_not_looked_at) {
    EXPECT_EQ(
        of({{"eth0", "192.168.1.5", "255.255.255.252"}, {"eth1", "192.168.1.9", "255.255.255.0"}}),
        (Networks{"192.168.1.4/255.255.255.252", "192.168.1.0/255.255.255.0"}));
}

TEST_F(RelayNetworks, a_wider_network_drops_all_narrower_ones_before_it) {
    EXPECT_EQ(of({{"eth0", "10.1.1.1", "255.255.255.0"},
                  {"eth1", "192.168.1.1", "255.255.255.0"},
                  {"eth2", "10.2.1.1", "255.255.0.0"},
                  {"eth3", "10.3.1.1", "255.0.0.0"}}),
              (Networks{"192.168.1.0/255.255.255.0", "10.0.0.0/255.0.0.0"}));
}

TEST_F(RelayNetworks, a_network_that_was_dropped_still_makes_a_later_one_its_duplicate) {
    EXPECT_EQ(of({{"eth0", "192.168.1.5", "255.255.255.0"},
                  {"eth1", "192.168.7.9", "255.255.0.0"},
                  {"eth2", "192.168.1.6", "255.255.255.0"}}),
              Networks{"192.168.0.0/255.255.0.0"});
}

TEST_F(RelayNetworks, a_duplicate_still_drops_narrower_networks_before_it) {
    EXPECT_EQ(of({{"eth0", "10.0.0.1", "255.255.255.0"},
                  {"eth1", "10.7.0.1", "255.255.255.0"},
                  {"eth2", "10.8.0.1", "255.0.0.0"}}),
              Networks{"10.0.0.0/255.255.255.0"});
}

TEST_F(RelayNetworks, keep_the_order_of_the_interfaces) {
    EXPECT_EQ(
        of({{"eth0", "172.16.0.1", "255.255.0.0"},
            {"eth1", "10.0.0.1", "255.0.0.0"},
            {"eth2", "192.168.1.1", "255.255.255.0"}}),
        (Networks{"172.16.0.0/255.255.0.0", "10.0.0.0/255.0.0.0", "192.168.1.0/255.255.255.0"}));
}

TEST_F(RelayNetworks, an_interface_that_is_down_gives_none) {
    EXPECT_EQ(of({{"eth0", "10.0.0.1", "255.0.0.0"}, {"eth1", "172.16.0.1", "255.255.0.0", false}}),
              Networks{"10.0.0.0/255.0.0.0"});
}

TEST_F(RelayNetworks, a_record_behind_the_last_ends_the_list_and_none_is_marked) {
    of({{"eth0", "10.0.0.1", "255.0.0.0"}, {"eth1", "172.16.0.1", "255.255.0.0"}});
    ASSERT_EQ(count, 2);
    EXPECT_EQ(list.get()[0].covered, 0);
    EXPECT_EQ(list.get()[1].covered, 0);
    EXPECT_EQ(list.get()[2].network, nullptr);
    EXPECT_EQ(list.get()[39].network, nullptr);
}

TEST_F(RelayNetworks, as_many_as_there_can_be_interfaces_fit_into_the_list) {
    EXPECT_EQ(of(many_interfaces(40)).back(), "10.28.0.0/255.255.0.0");
    EXPECT_EQ(count, 29);
    EXPECT_EQ(list.get()[29].network, nullptr);
}

TEST_F(RelayNetworks, there_are_none_where_the_interfaces_cannot_be_had) {
    fake_failing_interface_list();
    list.reset(relay_networks(&count));
    EXPECT_EQ(count, 0);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list.get()[0].network, nullptr);
}

}  // namespace
