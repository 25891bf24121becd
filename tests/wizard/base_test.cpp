// What the wizard knows about the host and keeps of the answers.

#include <gtest/gtest.h>
#include <sched.h>
#include <unistd.h>

#include <cstring>
#include <fstream>
#include <iterator>
#include <string>

#include "tests/support/process.h"
#include "tests/support/server_account.h"
#include "tests/wizard/fake_host.h"
#include "wizard/base/heap_text.h"
#include "wizard/base/host_facts.h"
#include "wizard/base/wizard_settings.h"

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

class Host : public testing::Test {
  protected:
    ~Host() override {
        fake_host = {};
        release_networks();
        host_facts = {};
    }
};

TEST_F(Host, has_interfaces_and_their_networks_until_they_are_released) {
    fake_host.interfaces = {{"lo", "127.0.0.1", "255.0.0.0"},
                            {"eth0", "192.168.7.2", "255.255.255.0"}};
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

TEST_F(Host, has_the_entry_for_all_interfaces_where_the_interfaces_cannot_be_had) {
    fake_host.interface_list_fails = true;
    discover_host();
    ASSERT_EQ(interface_count, 1);
    EXPECT_STREQ(interface_table[0].name, "all");
    EXPECT_STREQ(interface_table[0].address, "0.0.0.0");
    EXPECT_STREQ(interface_table[1].name, "");
    EXPECT_EQ(relay_network_count, 0);
}

TEST_F(Host, has_both_documents_in_the_directory_of_the_selected_profile) {
    fake_host.system = "NetBSD";
    discover_host();
    EXPECT_STREQ(readme_path, "/usr/pkg/teluma/share/doc/README");
    EXPECT_STREQ(others_doc_path, "/usr/pkg/teluma/share/doc/REMOVE-OTHERS.txt");
    EXPECT_EQ(others_doc_path, install_profiles[os_netbsd].doc_dir) << "the row's own field";
    EXPECT_STREQ(install_profiles[os_linux].doc_dir, "/opt/teluma/share/doc/");
}

void expect_shipped(const InstallProfile& profile, const System& system) {
    EXPECT_EQ(profile.config_file, system.data + "run/teluma.cfg");
    EXPECT_EQ(profile.server_binary, system.package + system.binary);
    EXPECT_EQ(profile.pid_file, system.data + "run/teluma.pid");
    EXPECT_STREQ(profile.admin_password, system.placeholder);
    EXPECT_EQ(profile.domains_dir, system.data + "domains/");
    EXPECT_EQ(profile.doc_dir, system.package + "share/doc/");
}

TEST_F(Host, has_its_row_selected_of_rows_that_are_all_filled) {
    for (int kind = 0; kind < os_kind_count; ++kind) {
        std::memset(install_profiles, 'x', sizeof install_profiles);
        fake_host.system = systems[kind].name;
        EXPECT_EQ(select_install_profile(), 0);
        EXPECT_EQ(os_kind, kind);
        for (int row = 0; row < os_kind_count; ++row)
            expect_shipped(install_profiles[row], systems[row]);
        EXPECT_EQ(profile_doc_dir(), install_profiles[kind].doc_dir);
        const HeapText first(profile_domains_dir());
        const HeapText second(profile_domains_dir());
        EXPECT_STREQ(first.get(), install_profiles[kind].domains_dir);
        EXPECT_STREQ(second.get(), first.get());
        EXPECT_NE(second.get(), first.get());
    }
}

TEST_F(Host, has_the_row_that_was_selected_where_the_system_has_none_or_no_name) {
    os_kind = os_netbsd;
    for (const char* unknown : {"linux", "SUNOS", "FreeBSD2", "Free", "Darwin", " "}) {
        fake_host.system = unknown;
        EXPECT_EQ(select_install_profile(), 0);
        EXPECT_EQ(os_kind, os_netbsd) << unknown;
    }
    fake_host.system = "SunOS";
    fake_host.uname_fails = true;
    EXPECT_EQ(select_install_profile(), 1);
    EXPECT_EQ(os_kind, os_netbsd);
    fake_host = {};
    EXPECT_EQ(select_install_profile(), 0);
    EXPECT_EQ(os_kind, os_linux) << "the kernel's";
}

TEST_F(Host, has_a_domain_name_that_ends_within_the_buffer_and_is_empty_where_there_is_none) {
    const std::string long_name(201, 'd');
    const auto domain = [](const std::string& told) {
        fake_host.domain = told;
        std::string name(201, 'x');
        host_domain_name(&name[0], name.size());
        return name.substr(0, name.find('\0'));
    };
    EXPECT_EQ(domain(std::string("example.com") + '\0'), "example.com");
    EXPECT_EQ(domain(long_name), long_name.substr(1));
    fake_host.has_no_domain = true;
    EXPECT_EQ(domain(long_name), "");
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

TEST_F(Host, has_one_user_only_where_the_superuser_is_all_there_is) {
    EXPECT_FALSE(has_one_user());
    if (verdict_among(1) == no_namespace)
        GTEST_SKIP() << "no user namespaces are made here, as in a chroot";
    EXPECT_EQ(verdict_among(1), one_user);
    EXPECT_TRUE(geteuid() != 0 || verdict_among(2) != one_user);
}

TEST(Settings, have_room_for_the_longest_answers_and_begin_with_all_aliases_and_the_usual_ports) {
    const WizardSettings fresh{};
    EXPECT_EQ(sizeof fresh.admin_password, 51U);
    EXPECT_EQ(sizeof fresh.primary_domain, 751U);
    EXPECT_EQ(sizeof fresh.domain_location, 751U);
    EXPECT_EQ(sizeof fresh.postmaster_password, 50U);
    EXPECT_EQ(std::size(fresh.service_enabled), 3U);
    EXPECT_EQ(std::size(fresh.relay_ticks), 40U);
    EXPECT_EQ(std::size(fresh.relay_selected), 104U);
    EXPECT_EQ(fresh.alias_root_to_postmaster, 1);
    EXPECT_EQ(fresh.alias_localhost, 1);
    EXPECT_EQ(fresh.alias_localhost_localdomain, 1);
    EXPECT_EQ(fresh.smtp_port, 25);
    EXPECT_EQ(fresh.pop3_port, 110);
    EXPECT_EQ(fresh.imap_port, 143);
    EXPECT_EQ(fresh.webmail_port, 80);
}

}  // namespace
