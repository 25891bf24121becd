#include "wizard/base/install_profile.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "tests/wizard/replaced_calls.h"
#include "wizard/base/heap_text.h"

namespace {

struct Row {
    const char* system_name;
    int kind;
    const char* config_file;
    const char* server_binary;
    const char* pid_file;
    const char* domains_dir;
    const char* doc_dir;
};

// The documentation of the server's packages says where each system keeps it.
const Row rows[] = {
    {"Linux", 0, "/var/opt/teluma/run/teluma.cfg", "/opt/teluma/bin/teluma",
     "/var/opt/teluma/run/teluma.pid", "/var/opt/teluma/domains/", "/opt/teluma/share/doc/"},
    {"FreeBSD", 1, "/var/teluma/run/teluma.cfg", "/usr/local/teluma/bin/teluma",
     "/var/teluma/run/teluma.pid", "/var/teluma/domains/", "/usr/local/teluma/share/doc/"},
    {"NetBSD", 2, "/var/teluma/run/teluma.cfg", "/usr/pkg/teluma/bin/teluma",
     "/var/teluma/run/teluma.pid", "/var/teluma/domains/", "/usr/pkg/teluma/share/doc/"},
    {"OpenBSD", 3, "/var/teluma/run/teluma.cfg", "/usr/local/teluma/bin/teluma",
     "/var/teluma/run/teluma.pid", "/var/teluma/domains/", "/usr/local/teluma/share/doc/"},
    {"SunOS", 4, "/var/opt/teluma/run/teluma.cfg", "/opt/teluma/bin/teluma ",
     "/var/opt/teluma/run/teluma.pid", "/var/opt/teluma/domains/", "/opt/teluma/share/doc/"},
};

void running_system(const std::string& name) {
    replaced_calls.uname = [name](utsname* host) {
        std::snprintf(host->sysname, sizeof host->sysname, "%s", name.c_str());
        return 0;
    };
}

std::string placeholder(int kind) {
    return install_profiles[kind].admin_password;
}

class SelectInstallProfile : public testing::Test {
  protected:
    SelectInstallProfile() { forget(); }
    ~SelectInstallProfile() override { forget(); }

    static void forget() {
        replaced_calls = {};
        os_kind = os_linux;
        // What is not written anew would show.
        std::memset(install_profiles, 'x', sizeof install_profiles);
    }
};

class OnSystem : public SelectInstallProfile, public testing::WithParamInterface<Row> {};

TEST_P(OnSystem, its_row_is_selected) {
    running_system(GetParam().system_name);
    EXPECT_EQ(select_install_profile(), 0);
    EXPECT_EQ(os_kind, GetParam().kind);
}

TEST_P(OnSystem, every_path_is_in_its_place) {
    running_system(GetParam().system_name);
    select_install_profile();
    const InstallProfile& profile = install_profiles[GetParam().kind];
    EXPECT_STREQ(profile.config_file, GetParam().config_file);
    EXPECT_STREQ(profile.server_binary, GetParam().server_binary);
    EXPECT_STREQ(profile.pid_file, GetParam().pid_file);
    EXPECT_STREQ(profile.domains_dir, GetParam().domains_dir);
    EXPECT_STREQ(profile.doc_dir, GetParam().doc_dir);
}

TEST_P(OnSystem, the_documentation_directory_is_the_rows_own_field) {
    running_system(GetParam().system_name);
    select_install_profile();
    EXPECT_EQ(profile_doc_dir(), install_profiles[GetParam().kind].doc_dir);
}

TEST_P(OnSystem, the_domains_directory_is_a_new_copy_on_every_call) {
    running_system(GetParam().system_name);
    select_install_profile();
    const HeapText first(profile_domains_dir());
    const HeapText second(profile_domains_dir());
    EXPECT_STREQ(first.get(), GetParam().domains_dir);
    EXPECT_STREQ(second.get(), GetParam().domains_dir);
    EXPECT_NE(first.get(), second.get());
    EXPECT_NE(first.get(), install_profiles[GetParam().kind].domains_dir);
}

INSTANTIATE_TEST_SUITE_P(InstallProfile, OnSystem, testing::ValuesIn(rows),
                         [](const auto& tested) { return std::string(tested.param.system_name); });

TEST_F(SelectInstallProfile, fills_the_rows_of_all_systems) {
    running_system("Linux");
    select_install_profile();
    for (const Row& row : rows) {
        EXPECT_STREQ(install_profiles[row.kind].config_file, row.config_file);
        EXPECT_STREQ(install_profiles[row.kind].server_binary, row.server_binary);
    }
}

TEST_F(SelectInstallProfile, puts_everything_back_that_has_been_changed) {
    running_system("Linux");
    select_install_profile();
    std::memset(profile_doc_dir(), 'x', 30);
    std::memset(install_profiles[os_linux].admin_password, 'x', 30);
    select_install_profile();
    EXPECT_STREQ(profile_doc_dir(), "/opt/teluma/share/doc/");
    EXPECT_EQ(placeholder(os_linux).size(), 6U);
}

TEST_F(SelectInstallProfile, placeholder_passwords_have_6_characters_or_8_on_netbsd_and_openbsd) {
    select_install_profile();
    EXPECT_EQ(placeholder(os_linux).size(), 6U);
    EXPECT_EQ(placeholder(os_freebsd).size(), 6U);
    EXPECT_EQ(placeholder(os_netbsd).size(), 8U);
    EXPECT_EQ(placeholder(os_openbsd).size(), 8U);
    EXPECT_EQ(placeholder(os_sunos).size(), 6U);
}

TEST_F(SelectInstallProfile, linux_and_sunos_share_a_placeholder_and_netbsd_and_openbsd_do) {
    select_install_profile();
    EXPECT_EQ(placeholder(os_linux), placeholder(os_sunos));
    EXPECT_EQ(placeholder(os_netbsd), placeholder(os_openbsd));
    EXPECT_NE(placeholder(os_linux), placeholder(os_freebsd));
}

TEST_F(SelectInstallProfile, the_sunos_executable_ends_in_one_blank) {
    select_install_profile();
    const std::string command = std::string(install_profiles[os_sunos].server_binary) + " -A";
    EXPECT_EQ(command, "/opt/teluma/bin/teluma  -A");
}

TEST_F(SelectInstallProfile, a_name_in_other_case_leaves_the_first_row_selected) {
    running_system("linux");
    EXPECT_EQ(select_install_profile(), 0);
    EXPECT_EQ(os_kind, 0);
}

TEST_F(SelectInstallProfile, darwin_takes_the_first_row) {
    running_system("Darwin");
    EXPECT_EQ(select_install_profile(), 0);
    EXPECT_EQ(os_kind, 0);
}

TEST_F(SelectInstallProfile, a_system_that_cannot_be_asked_for_its_name_takes_the_first_row) {
    replaced_calls.uname = [](utsname*) { return -1; };
    EXPECT_EQ(select_install_profile(), 1);
    EXPECT_EQ(os_kind, 0);
    EXPECT_STREQ(profile_doc_dir(), "/opt/teluma/share/doc/");
}

}  // namespace
