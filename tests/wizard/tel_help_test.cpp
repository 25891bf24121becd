#include "wizard/base/tel_help.h"

#include <gtest/gtest.h>
#include <malloc.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/case_name.h"
#include "tests/support/descriptor.h"
#include "tests/support/server_account.h"
#include "tests/wizard/fake_interfaces.h"
#include "tests/wizard/replaced_calls.h"
#include "wizard/base/heap_text.h"

namespace {

class Interfaces : public testing::Test {
  protected:
    ~Interfaces() override { replaced_calls = {}; }

    // Asks for the table; its entries as "name address netmask".
    std::vector<std::string> ask() {
        table.reset(interfaces(&count));
        std::vector<std::string> entries;
        for (int i = 0; table != nullptr && i < count; ++i) {
            const interf_addr& entry = table.get()[i];
            entries.push_back(std::string(entry.name) + " " + entry.address + " " + entry.netmask);
        }
        return entries;
    }

    std::unique_ptr<interf_addr, FreeHeap> table;
    int count = -1;
};

using Entries = std::vector<std::string>;

const char all[] = "all 0.0.0.0 ";

struct Host {
    const char* name;
    std::vector<FakeInterface> interfaces;
    Entries entries;
};

const Host hosts[] = {
    {"that_has_none", {}, {all}},
    {"in_the_kernels_order",
     {{"lo", "127.0.0.1", "255.0.0.0"},
      {"fifteen-letters", "192.168.7.9", "255.255.0.0"},
      {"eth0", "10.9.8.7", "255.255.255.252"}},
     {all, "lo 127.0.0.1 255.0.0.0", "fifteen-letters 192.168.7.9 255.255.0.0",
      "eth0 10.9.8.7 255.255.255.252"}},
    {"but_those_that_are_down",
     {{"eth0", "10.0.0.1", "255.0.0.0", false}, {"eth1", "10.1.0.1", "255.0.0.0"}},
     {all, "eth1 10.1.0.1 255.0.0.0"}},
    {"but_those_of_another_address_family",
     {{"eth0", "10.0.0.1", "255.0.0.0", true, AF_PACKET}, {"eth1", "10.1.0.1", "255.0.0.0"}},
     {all, "eth1 10.1.0.1 255.0.0.0"}},
    {"but_those_that_cannot_be_asked_about",
     {{"bad0", "10.0.0.1", "255.0.0.0", true, AF_INET, SIOCGIFADDR},
      {"eth0", "10.1.0.1", "255.0.0.0"},
      {"bad1", "10.2.0.1", "255.0.0.0", true, AF_INET, SIOCGIFFLAGS},
      {"eth1", "10.3.0.1", "255.0.0.0"},
      {"bad2", "10.4.0.1", "255.0.0.0", true, AF_INET, SIOCGIFNETMASK}},
     {all, "eth0 10.1.0.1 255.0.0.0", "eth1 10.3.0.1 255.0.0.0"}},
};

class InterfacesOfHost : public Interfaces, public testing::WithParamInterface<Host> {};

TEST_P(InterfacesOfHost, are_listed_after_the_entry_for_all_and_the_rest_is_empty) {
    fake_interfaces(GetParam().interfaces);
    EXPECT_EQ(ask(), GetParam().entries);
    EXPECT_GE(malloc_usable_size(table.get()), 30 * sizeof(interf_addr));
    const interf_addr empty = {};
    EXPECT_EQ(std::memcmp(table.get()[0].netmask, empty.netmask, sizeof empty.netmask), 0);
    for (int i = count; i < interface_table_size; ++i)
        EXPECT_EQ(std::memcmp(&table.get()[i], &empty, sizeof empty), 0) << i;
}

INSTANTIATE_TEST_SUITE_P(TelHelp, InterfacesOfHost, testing::ValuesIn(hosts), CaseName());

TEST_F(Interfaces, an_entry_has_three_fields_of_256_bytes) {
    EXPECT_EQ(sizeof(interf_addr::name), 256U);
    EXPECT_EQ(sizeof(interf_addr::address), 256U);
    EXPECT_EQ(sizeof(interf_addr::netmask), 256U);
    EXPECT_EQ(sizeof(interf_addr), 768U);
}

TEST_F(Interfaces, one_after_700_that_are_down_is_listed) {
    std::vector<FakeInterface> host(700, {"down", "10.0.0.1", "255.0.0.0", false});
    host.push_back({"eth0", "10.1.0.1", "255.0.0.0"});
    fake_interfaces(host);
    EXPECT_EQ(ask(), (Entries{all, "eth0 10.1.0.1 255.0.0.0"}));
}

TEST_F(Interfaces, at_most_29_are_listed) {
    for (const int number : {29, 35}) {
        fake_interfaces(many_interfaces(number));
        EXPECT_EQ(ask().back(), "fake28 10.28.0.1 255.255.0.0");
        EXPECT_EQ(count, 30);
    }
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
    fake_failing_interface_list();
    EXPECT_EQ(interfaces(&count), nullptr);
    EXPECT_EQ(count, -1);
    fake_interfaces({});
    ask();
    EXPECT_EQ(lowest_free(), free_before) << "all sockets are closed again";
}

const ExitStatus one_user = exited(1);
const ExitStatus no_namespace = exited(2);

// What has_one_user() says in a new user namespace that knows `count` ids.
ExitStatus verdict_among(int count) {
    return as_user(geteuid(), [&] {
        const std::string ids = "0 " + std::to_string(geteuid()) + " " + std::to_string(count);
        if (unshare(CLONE_NEWUSER) == -1) _exit(2);
        std::ofstream("/proc/self/uid_map") << ids;
        _exit(has_one_user() ? 1 : 0);
    });
}

TEST(HasOneUser, is_true_only_where_the_superuser_is_all_there_is) {
    EXPECT_FALSE(has_one_user());
    if (verdict_among(1) == no_namespace)
        GTEST_SKIP() << "no user namespaces are made here, as in a chroot";
    EXPECT_EQ(verdict_among(1), one_user);
    EXPECT_TRUE(geteuid() != 0 || verdict_among(2) != one_user);
}

struct DomainAnswer {
    const char* name;
    int result;
    std::string domain;  // what the host writes, without an end, into the buffer
    std::string expected;
};

const DomainAnswer domain_answers[] = {
    {"known", 0, std::string("example.com") + '\0', "example.com"},
    {"too_long", 0, std::string(201, 'd'), std::string(200, 'd')},
    {"unknown", -1, std::string(201, 'd'), ""},
};

class HostDomainName : public testing::TestWithParam<DomainAnswer> {
  protected:
    ~HostDomainName() override { replaced_calls = {}; }
};

TEST_P(HostDomainName, ends_within_the_buffer_and_is_empty_where_it_cannot_be_asked_for) {
    replaced_calls.getdomainname = [](char* name, size_t size) {
        const std::string& domain = GetParam().domain;
        std::memcpy(name, domain.data(), std::min(domain.size(), size));
        return GetParam().result;
    };
    std::string name(201, 'x');
    host_domain_name(&name[0], name.size());
    ASSERT_NE(name.find('\0'), std::string::npos);
    EXPECT_EQ(name.c_str(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(TelHelp, HostDomainName, testing::ValuesIn(domain_answers), CaseName());

}  // namespace
