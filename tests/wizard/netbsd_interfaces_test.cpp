// The host routines as they are compiled on NetBSD, whose requests by an interface's name answer
// for its first address. This system's headers are read before, as they would look for NetBSD's
// parts where that is defined.

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <algorithm>
#include <cassert>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "tests/wizard/fake_host.h"
#include "wizard/base/descriptor.h"
#include "wizard/base/heap_text.h"
#include "wizard/base/host_facts.h"

#define __NetBSD__ 1
#include "wizard/base/tel_help.cpp"

namespace {

class NetBsdInterfaces : public testing::Test {
  protected:
    ~NetBsdInterfaces() override { fake_host = {}; }

    // The addresses and netmasks after the entry for all.
    static std::vector<std::string> ask() {
        int count = 0;
        const std::unique_ptr<interf_addr, FreeHeap> table(interfaces(&count));
        std::vector<std::string> entries;
        for (int i = 1; i < count; ++i)
            entries.push_back(std::string(table.get()[i].address) + " " + table.get()[i].netmask);
        return entries;
    }
};

TEST_F(NetBsdInterfaces, are_listed_with_each_address_whose_netmask_can_be_asked_for) {
    fake_host.interfaces = {{"wm0", "10.0.0.1", "255.0.0.0"},
                            {"wm0", "192.168.7.9", "255.255.255.0"},
                            {"wm0", "10.0.0.2", "255.0.0.0", true, AF_INET, SIOCGIFALIAS},
                            {"wm1", "172.16.0.1", "255.255.0.0"}};
    EXPECT_EQ(ask(), (std::vector<std::string>{"10.0.0.1 255.0.0.0", "192.168.7.9 255.255.255.0",
                                               "172.16.0.1 255.255.0.0"}));
}

// The record of a link, whose address begins with its length and may have no room in an ifreq.
std::string link_record(std::size_t address_length) {
    std::string record = "link0";
    record.resize(std::max(sizeof(ifreq), IFNAMSIZ + address_length));
    record[IFNAMSIZ] = static_cast<char>(address_length);
    return record;
}

TEST_F(NetBsdInterfaces, are_found_between_addresses_of_any_length) {
    fake_host.interfaces = {{"wm0", "10.0.0.1", "255.0.0.0"}, {"wm1", "172.16.0.1", "255.255.0.0"}};
    for (const std::size_t length : {0, 6, 16, 24, 25, 28, 54, 255}) {
        fake_host.before_each_record = link_record(length);
        fake_host.missing = 0;
        EXPECT_EQ(ask().size(), 2U) << length;
        fake_host.missing = 1;
        EXPECT_EQ(ask(), std::vector<std::string>{"10.0.0.1 255.0.0.0"}) << "the last one is cut";
    }
}

}  // namespace
