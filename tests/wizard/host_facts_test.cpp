#include "wizard/base/host_facts.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "tests/wizard/fake_interfaces.h"
#include "tests/wizard/replaced_calls.h"
#include "wizard/base/heap_text.h"

namespace {

struct System {
    const char* name;
    std::string data;     // the server's directory of what it changes
    std::string package;  // and of what was installed
    const char* binary;
    const char* placeholder;
};

// By OsKind. The documentation of the server's packages says where each system keeps it.
const System systems[] = {
    {"Linux", "/var/opt/teluma/", "/opt/teluma/", "bin/teluma", "unset1"},
    {"FreeBSD", "/var/teluma/", "/usr/local/teluma/", "bin/teluma", "unset2"},
    {"NetBSD", "/var/teluma/", "/usr/pkg/teluma/", "bin/teluma", "unset-34"},
    {"OpenBSD", "/var/teluma/", "/usr/local/teluma/", "bin/teluma", "unset-34"},
    {"SunOS", "/var/opt/teluma/", "/opt/teluma/", "bin/teluma ", "unset1"},
};

// What uname(2) says, and what it returns.
void running_system(const char* name, int result = 0) {
    replaced_calls.uname = [name, result](utsname* host) {
        std::snprintf(host->sysname, sizeof host->sysname, "%s", name);
        return result;
    };
}

class HostFactsTest : public testing::Test {
  protected:
    ~HostFactsTest() override {
        replaced_calls = {};
        release_networks();
        host_facts = {};
    }
};

TEST_F(HostFactsTest, are_the_interfaces_and_their_networks_until_they_are_released) {
    fake_interfaces({{"lo", "127.0.0.1", "255.0.0.0"}, {"eth0", "192.168.7.2", "255.255.255.0"}});
    discover_host();
    ASSERT_EQ(interface_count, 3);
    EXPECT_STREQ(interface_table[0].name, "all");
    EXPECT_STREQ(interface_table[2].address, "192.168.7.2");
    ASSERT_EQ(relay_network_count, 2);
    EXPECT_STREQ(relay_network_list[1].network, "192.168.7.0");
    EXPECT_STREQ(relay_network_list[1].netmask, "255.255.255.0");
    for (int i = 0; i < 2; ++i) {
        release_networks();
        EXPECT_EQ(interface_table, nullptr);
        EXPECT_EQ(interface_count, 0);
        EXPECT_EQ(relay_network_list, nullptr);
        EXPECT_EQ(relay_network_count, 0);
    }
}

TEST_F(HostFactsTest, have_the_entry_for_all_interfaces_where_the_interfaces_cannot_be_had) {
    fake_failing_interface_list();
    discover_host();
    ASSERT_EQ(interface_count, 1);
    EXPECT_STREQ(interface_table[0].name, "all");
    EXPECT_STREQ(interface_table[0].address, "0.0.0.0");
    EXPECT_STREQ(interface_table[1].name, "");
    EXPECT_EQ(relay_network_count, 0);
}

TEST_F(HostFactsTest, have_both_documents_in_the_directory_of_the_selected_profile) {
    running_system("NetBSD");
    discover_host();
    EXPECT_STREQ(readme_path, "/usr/pkg/teluma/share/doc/README");
    EXPECT_STREQ(others_doc_path, "/usr/pkg/teluma/share/doc/REMOVE-OTHERS.txt");
    EXPECT_EQ(others_doc_path, install_profiles[os_netbsd].doc_dir) << "the row's own field";
    EXPECT_STREQ(install_profiles[os_linux].doc_dir, "/opt/teluma/share/doc/");
}

class OnSystem : public HostFactsTest, public testing::WithParamInterface<int> {};

TEST_P(OnSystem, its_row_is_selected_and_all_rows_are_filled) {
    std::memset(install_profiles, 'x', sizeof install_profiles);
    running_system(systems[GetParam()].name);
    EXPECT_EQ(select_install_profile(), 0);
    EXPECT_EQ(os_kind, GetParam());
    for (int kind = 0; kind < os_kind_count; ++kind) {
        const System& system = systems[kind];
        const InstallProfile& profile = install_profiles[kind];
        EXPECT_EQ(profile.config_file, system.data + "run/teluma.cfg");
        EXPECT_EQ(profile.server_binary, system.package + system.binary);
        EXPECT_EQ(profile.pid_file, system.data + "run/teluma.pid");
        EXPECT_STREQ(profile.admin_password, system.placeholder);
        EXPECT_EQ(profile.domains_dir, system.data + "domains/");
        EXPECT_EQ(profile.doc_dir, system.package + "share/doc/");
    }
    EXPECT_EQ(profile_doc_dir(), install_profiles[os_kind].doc_dir);
    const HeapText first(profile_domains_dir());
    const HeapText second(profile_domains_dir());
    EXPECT_STREQ(first.get(), install_profiles[os_kind].domains_dir);
    EXPECT_STREQ(second.get(), install_profiles[os_kind].domains_dir);
    EXPECT_NE(first.get(), second.get());
}

INSTANTIATE_TEST_SUITE_P(HostFacts, OnSystem, testing::Range(0, 5));

TEST_F(HostFactsTest, have_the_row_of_this_system) {
    utsname host = {};
    ASSERT_EQ(uname(&host), 0);
    os_kind = os_sunos;
    EXPECT_EQ(select_install_profile(), 0);
    EXPECT_STREQ(systems[os_kind].name, host.sysname);
}

TEST_F(HostFactsTest, have_the_row_that_was_selected_where_the_system_has_none_or_no_name) {
    os_kind = os_netbsd;
    for (const char* unknown : {"linux", "SUNOS", "FreeBSD2", "Free", "Darwin", ""}) {
        running_system(unknown);
        EXPECT_EQ(select_install_profile(), 0);
        EXPECT_EQ(os_kind, os_netbsd);
    }
    running_system("SunOS", -1);
    EXPECT_EQ(select_install_profile(), 1);
    EXPECT_EQ(os_kind, os_netbsd);
}

}  // namespace
