#include "wizard/base/tel_help.h"

#include <gtest/gtest.h>
#include <malloc.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/descriptor.h"
#include "tests/support/server_account.h"
#include "tests/wizard/fake_interfaces.h"
#include "tests/wizard/replaced_calls.h"
#include "wizard/base/heap_text.h"
#include "wizard/base/install_profile.h"

namespace {

TEST(OsKindNamed, knows_five_systems_by_their_exact_names) {
    EXPECT_EQ(os_kind_named("Linux"), 0);
    EXPECT_EQ(os_kind_named("FreeBSD"), 1);
    EXPECT_EQ(os_kind_named("NetBSD"), 2);
    EXPECT_EQ(os_kind_named("OpenBSD"), 3);
    EXPECT_EQ(os_kind_named("SunOS"), 4);
}

TEST(OsKindNamed, compares_case_and_the_whole_name) {
    EXPECT_EQ(os_kind_named("linux"), -1);
    EXPECT_EQ(os_kind_named("SUNOS"), -1);
    EXPECT_EQ(os_kind_named("FreeBSD2"), -1);
    EXPECT_EQ(os_kind_named("Free"), -1);
    EXPECT_EQ(os_kind_named("Darwin"), -1);
    EXPECT_EQ(os_kind_named(""), -1);
}

class DetectOs : public testing::Test {
  protected:
    ~DetectOs() override {
        replaced_calls = {};
        os_kind = os_linux;
    }

    static void answer(const std::string& name) {
        replaced_calls.uname = [name](utsname* host) {
            std::snprintf(host->sysname, sizeof host->sysname, "%s", name.c_str());
            return 0;
        };
    }
};

TEST_F(DetectOs, finds_the_system_that_runs_here) {
    utsname host = {};
    ASSERT_EQ(uname(&host), 0);
    os_kind = os_sunos;
    EXPECT_EQ(detect_os(), 0);
    EXPECT_EQ(os_kind, os_kind_named(host.sysname));
}

TEST_F(DetectOs, a_system_without_a_row_leaves_the_selection_alone) {
    os_kind = os_netbsd;
    answer("Darwin");
    EXPECT_EQ(detect_os(), 0);
    EXPECT_EQ(os_kind, os_netbsd);
}

TEST_F(DetectOs, a_failing_uname_leaves_the_selection_alone) {
    os_kind = os_netbsd;
    replaced_calls.uname = [](utsname* host) {
        std::snprintf(host->sysname, sizeof host->sysname, "SunOS");
        return -1;
    };
    EXPECT_EQ(detect_os(), 1);
    EXPECT_EQ(os_kind, os_netbsd);
}

std::string octet(const char* dotted, int position) {
    return HeapText(octet_at(dotted, position)).get();
}

TEST(OctetAt, reads_up_to_the_next_dot) {
    EXPECT_EQ(octet("192.168.7.10", 0), "192");
    EXPECT_EQ(octet("192.168.7.10", 4), "168");
    EXPECT_EQ(octet("192.168.7.10", 8), "7");
}

TEST(OctetAt, reads_the_last_octet_up_to_the_end) {
    EXPECT_EQ(octet("192.168.7.10", 10), "10");
    EXPECT_EQ(octet("7", 0), "7");
}

TEST(OctetAt, starts_anywhere_in_an_octet) {
    EXPECT_EQ(octet("192.168.7.10", 1), "92");
    EXPECT_EQ(octet("192.168.7.10", 3), "");
}

TEST(OctetAt, is_empty_at_and_behind_the_end) {
    EXPECT_EQ(octet("10.0.0.0", 8), "");
    EXPECT_EQ(octet("10.0.0.0", 9), "");
    EXPECT_EQ(octet("10.0.0.0", 1000), "");
    EXPECT_EQ(octet("", 0), "");
}

TEST(OctetAt, fills_the_rest_of_its_five_bytes_with_zeros) {
    const HeapText found(octet_at("10.20.30.40", 3));
    EXPECT_EQ(std::string(found.get(), 5), std::string("20\0\0\0", 5));
}

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

    static int lowest_free_descriptor() {
        return Descriptor(checked(dup(STDIN_FILENO), "dup")).get();
    }

    std::unique_ptr<interf_addr, FreeHeap> table;
    int count = -1;
};

using Entries = std::vector<std::string>;

const char all[] = "all 0.0.0.0 ";

TEST_F(Interfaces, an_entry_has_three_fields_of_256_bytes) {
    EXPECT_EQ(sizeof(interf_addr::name), 256U);
    EXPECT_EQ(sizeof(interf_addr::address), 256U);
    EXPECT_EQ(sizeof(interf_addr::netmask), 256U);
    EXPECT_EQ(sizeof(interf_addr), 768U);
}

TEST_F(Interfaces, stand_behind_the_entry_for_all_in_the_kernels_order) {
    fake_interfaces({{"lo", "127.0.0.1", "255.0.0.0"},
                     {"wan9", "192.168.7.9", "255.255.0.0"},
                     {"eth0", "10.9.8.7", "255.255.255.252"}});
    EXPECT_EQ(ask(), (Entries{all, "lo 127.0.0.1 255.0.0.0", "wan9 192.168.7.9 255.255.0.0",
                              "eth0 10.9.8.7 255.255.255.252"}));
}

TEST_F(Interfaces, are_only_the_entry_for_all_where_the_host_has_none) {
    fake_interfaces({});
    EXPECT_EQ(ask(), Entries{all});
}

TEST_F(Interfaces, loopback_is_listed_like_any_other) {
    fake_interfaces({{"lo", "127.0.0.1", "255.0.0.0"}});
    EXPECT_EQ(ask(), (Entries{all, "lo 127.0.0.1 255.0.0.0"}));
}

TEST_F(Interfaces, one_that_is_down_is_left_out) {
    fake_interfaces({{"eth0", "10.0.0.1", "255.0.0.0", false}, {"eth1", "10.1.0.1", "255.0.0.0"}});
    EXPECT_EQ(ask(), (Entries{all, "eth1 10.1.0.1 255.0.0.0"}));
}

TEST_F(Interfaces, one_of_another_address_family_is_left_out) {
    fake_interfaces(
        {{"eth0", "10.0.0.1", "255.0.0.0", true, AF_PACKET}, {"eth1", "10.1.0.1", "255.0.0.0"}});
    EXPECT_EQ(ask(), (Entries{all, "eth1 10.1.0.1 255.0.0.0"}));
}

TEST_F(Interfaces, one_that_cannot_be_asked_about_is_left_out) {
    fake_interfaces({{"bad0", "10.0.0.1", "255.0.0.0", true, AF_INET, SIOCGIFADDR},
                     {"eth0", "10.1.0.1", "255.0.0.0"},
                     {"bad1", "10.2.0.1", "255.0.0.0", true, AF_INET, SIOCGIFFLAGS},
                     {"eth1", "10.3.0.1", "255.0.0.0"},
                     {"bad2", "10.4.0.1", "255.0.0.0", true, AF_INET, SIOCGIFNETMASK},
                     {"eth2", "10.5.0.1", "255.0.0.0"}});
    EXPECT_EQ(ask(), (Entries{all, "eth0 10.1.0.1 255.0.0.0", "eth1 10.3.0.1 255.0.0.0",
                              "eth2 10.5.0.1 255.0.0.0"}));
}

TEST_F(Interfaces, one_that_was_left_out_last_does_not_hide_the_end_of_the_table) {
    fake_interfaces({{"eth0", "10.0.0.1", "255.0.0.0"}, {"eth1", "10.1.0.1", "255.0.0.0", false}});
    ask();
    ASSERT_EQ(count, 2);
    EXPECT_STREQ(table.get()[2].name, "");
}

TEST_F(Interfaces, the_table_has_30_entries_and_its_rest_is_empty) {
    fake_interfaces({{"eth0", "10.0.0.1", "255.0.0.0"}});
    ask();
    EXPECT_GE(malloc_usable_size(table.get()), 30 * sizeof(interf_addr));
    const interf_addr empty = {};
    for (int i = 2; i < 30; ++i)
        EXPECT_EQ(std::memcmp(&table.get()[i], &empty, sizeof empty), 0) << i;
}

TEST_F(Interfaces, names_of_the_greatest_length_are_kept_whole) {
    fake_interfaces({{"fifteen-letters", "10.0.0.1", "255.0.0.0"}});
    EXPECT_EQ(ask(), (Entries{all, "fifteen-letters 10.0.0.1 255.0.0.0"}));
}

TEST_F(Interfaces, _29_fit_into_the_table) {
    fake_interfaces(many_interfaces(29));
    EXPECT_EQ(ask().back(), "fake28 10.28.0.1 255.255.0.0");
    EXPECT_EQ(count, 30);
}

TEST_F(Interfaces, one_behind_700_that_are_down_is_listed) {
    std::vector<FakeInterface> host(700, {"down", "10.0.0.1", "255.0.0.0", false});
    host.push_back({"eth0", "10.1.0.1", "255.0.0.0"});
    fake_interfaces(host);
    EXPECT_EQ(ask(), (Entries{all, "eth0 10.1.0.1 255.0.0.0"}));
}

TEST_F(Interfaces, listing_stops_at_29) {
    fake_interfaces(many_interfaces(35));
    EXPECT_EQ(ask().back(), "fake28 10.28.0.1 255.255.0.0");
    EXPECT_EQ(count, 30);
}

TEST_F(Interfaces, a_list_that_cannot_be_had_is_null_and_no_count_is_stored) {
    fake_failing_interface_list();
    ask();
    EXPECT_EQ(table, nullptr);
    EXPECT_EQ(count, -1);
}

TEST_F(Interfaces, a_socket_that_cannot_be_had_gives_null_and_no_count_is_stored) {
    rlimit before = {};
    getrlimit(RLIMIT_NOFILE, &before);
    const rlimit none = {0, before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
    ask();
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(table, nullptr);
    EXPECT_EQ(count, -1);
}

TEST_F(Interfaces, the_socket_is_closed_again_whether_the_list_could_be_had_or_not) {
    const int before = lowest_free_descriptor();
    fake_interfaces({{"eth0", "10.0.0.1", "255.0.0.0"}});
    ask();
    EXPECT_EQ(lowest_free_descriptor(), before);
    fake_failing_interface_list();
    ask();
    EXPECT_EQ(lowest_free_descriptor(), before);
}

const ExitStatus one_user = exited(1);
const ExitStatus no_namespace = exited(2);

// What has_one_user() says in a new user namespace that knows `count` ids.
ExitStatus verdict_among(int count) {
    return as_user(geteuid(), [&] {
        const std::string ids = "0 " + std::to_string(geteuid()) + " " + std::to_string(count);
        if (unshare(CLONE_NEWUSER) == -1)
            _exit(2);
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

class HostDomainName : public testing::Test {
  protected:
    ~HostDomainName() override { replaced_calls = {}; }

    static std::string ask(size_t size) {
        std::string name(size, 'x');
        host_domain_name(&name[0], size);
        return name.substr(0, name.find('\0'));
    }
};

TEST_F(HostDomainName, is_the_one_that_the_host_has) {
    replaced_calls.getdomainname = [](char* name, size_t size) {
        std::snprintf(name, size, "example.com");
        return 0;
    };
    EXPECT_EQ(ask(201), "example.com");
}

TEST_F(HostDomainName, ends_within_the_buffer_where_the_host_has_left_out_the_end) {
    replaced_calls.getdomainname = [](char* name, size_t size) {
        std::memset(name, 'd', size);
        return 0;
    };
    EXPECT_EQ(ask(201), std::string(200, 'd'));
}

TEST_F(HostDomainName, is_empty_where_it_cannot_be_asked_for) {
    replaced_calls.getdomainname = [](char* name, size_t size) {
        std::memset(name, 'd', size);
        return -1;
    };
    EXPECT_EQ(ask(201), "");
}

}  // namespace
