// The network interfaces that a sandbox is given, as the kernel lists them inside.

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>

#include <string>
#include <vector>

#include "tests/support/local_port.h"

namespace {

std::string dotted(const sockaddr* address) {
    char text[INET_ADDRSTRLEN] = "";
    const auto* internet = reinterpret_cast<const sockaddr_in*>(address);
    inet_ntop(AF_INET, &internet->sin_addr, text, sizeof text);
    return text;
}

// The IPv4 interfaces in the kernel's order, as "name address/netmask up".
std::vector<std::string> interfaces() {
    ifaddrs* list = nullptr;
    checked(getifaddrs(&list), "getifaddrs");
    std::vector<std::string> found;
    for (const ifaddrs* entry = list; entry != nullptr; entry = entry->ifa_next) {
        if (entry->ifa_addr == nullptr || entry->ifa_addr->sa_family != AF_INET)
            continue;
        const char* state = (entry->ifa_flags & IFF_UP) != 0 ? " up" : " down";
        found.push_back(std::string(entry->ifa_name) + " " + dotted(entry->ifa_addr) + "/" +
                        dotted(entry->ifa_netmask) + state);
    }
    freeifaddrs(list);
    return found;
}

const char loopback[] = "lo 127.0.0.1/255.0.0.0 up";

TEST(DefaultInterfaces, are_the_loopback_and_two_networks) {
    EXPECT_EQ(interfaces(), (std::vector<std::string>{loopback, "eth0 192.168.7.2/255.255.255.0 up",
                                                      "eth1 10.20.0.5/255.0.0.0 up"}));
}

TEST(LoopbackOnlyInterfaces, are_the_loopback_alone) {
    EXPECT_EQ(interfaces(), std::vector<std::string>{loopback});
}

TEST(ListedInterfaces, keep_the_order_of_the_list_with_those_that_are_down) {
    EXPECT_EQ(interfaces(),
              (std::vector<std::string>{
                  loopback, "wan9 192.168.7.9/255.255.0.0 up", "lan1 192.168.1.5/255.255.255.0 up",
                  "off2 10.9.8.7/255.255.255.252 down", "lan0 192.168.1.6/255.255.255.0 up"}));
}

TEST(ListedInterfaces, have_addresses_that_can_be_listened_at_and_reached) {
    LocalPort port(25);
    port.open("192.168.1.5");
    connection_to(25, "192.168.1.5");
    EXPECT_EQ(port.takeAll(), 1);
}

}  // namespace
