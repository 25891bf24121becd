#include "wizard/base/install_profile.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "tests/support/case_name.h"
#include "tests/wizard/replaced_calls.h"
#include "wizard/base/heap_text.h"

namespace {

struct Row {
    const char* name;  // the system's
    int kind;
    const char* config_file;
    const char* server_binary;
    const char* pid_file;
    const char* admin_password;  // a placeholder
    const char* domains_dir;
    const char* doc_dir;
};

// The documentation of the server's packages says where each system keeps it.
const Row rows[] = {
    {"Linux", 0, "/var/opt/teluma/run/teluma.cfg", "/opt/teluma/bin/teluma",
     "/var/opt/teluma/run/teluma.pid", "unset1", "/var/opt/teluma/domains/",
     "/opt/teluma/share/doc/"},
    {"FreeBSD", 1, "/var/teluma/run/teluma.cfg", "/usr/local/teluma/bin/teluma",
     "/var/teluma/run/teluma.pid", "unset2", "/var/teluma/domains/",
     "/usr/local/teluma/share/doc/"},
    {"NetBSD", 2, "/var/teluma/run/teluma.cfg", "/usr/pkg/teluma/bin/teluma",
     "/var/teluma/run/teluma.pid", "unset-34", "/var/teluma/domains/",
     "/usr/pkg/teluma/share/doc/"},
    {"OpenBSD", 3, "/var/teluma/run/teluma.cfg", "/usr/local/teluma/bin/teluma",
     "/var/teluma/run/teluma.pid", "unset-34", "/var/teluma/domains/",
     "/usr/local/teluma/share/doc/"},
    {"SunOS", 4, "/var/opt/teluma/run/teluma.cfg", "/opt/teluma/bin/teluma ",
     "/var/opt/teluma/run/teluma.pid", "unset1", "/var/opt/teluma/domains/",
     "/opt/teluma/share/doc/"},
};

void running_system(const std::string& name) {
    replaced_calls.uname = [name](utsname* host) {
        std::snprintf(host->sysname, sizeof host->sysname, "%s", name.c_str());
        return 0;
    };
}

class SelectInstallProfile : public testing::Test {
  protected:
    SelectInstallProfile() {
        // What is not written anew would show.
        std::memset(install_profiles, 'x', sizeof install_profiles);
    }
    ~SelectInstallProfile() override {
        replaced_calls = {};
        host_facts = {};
    }
};

class OnSystem : public SelectInstallProfile, public testing::WithParamInterface<Row> {};

TEST_P(OnSystem, its_row_is_selected_and_every_text_is_in_its_place) {
    const Row& row = GetParam();
    running_system(row.name);
    EXPECT_EQ(select_install_profile(), 0);
    EXPECT_EQ(os_kind, row.kind);
    const InstallProfile& profile = install_profiles[row.kind];
    EXPECT_STREQ(profile.config_file, row.config_file);
    EXPECT_STREQ(profile.server_binary, row.server_binary);
    EXPECT_STREQ(profile.pid_file, row.pid_file);
    EXPECT_STREQ(profile.admin_password, row.admin_password);
    EXPECT_EQ(profile_doc_dir(), profile.doc_dir);
    EXPECT_STREQ(profile_doc_dir(), row.doc_dir);
    const HeapText first(profile_domains_dir());
    const HeapText second(profile_domains_dir());
    EXPECT_STREQ(first.get(), row.domains_dir);
    EXPECT_STREQ(second.get(), row.domains_dir);
    EXPECT_NE(first.get(), second.get());
    EXPECT_NE(first.get(), profile.domains_dir);
}

INSTANTIATE_TEST_SUITE_P(InstallProfile, OnSystem, testing::ValuesIn(rows), CaseName());

TEST_F(SelectInstallProfile, fills_the_rows_of_all_systems) {
    running_system("Linux");
    select_install_profile();
    for (const Row& row : rows) {
        EXPECT_STREQ(install_profiles[row.kind].config_file, row.config_file);
        EXPECT_STREQ(install_profiles[row.kind].doc_dir, row.doc_dir);
    }
}

TEST_F(SelectInstallProfile, takes_the_row_of_this_system) {
    utsname host = {};
    ASSERT_EQ(uname(&host), 0);
    os_kind = os_sunos;
    EXPECT_EQ(select_install_profile(), 0);
    EXPECT_EQ(os_kind, os_kind_named(host.sysname));
}

TEST_F(SelectInstallProfile, leaves_the_selection_alone_on_a_system_without_a_row) {
    for (const char* name : {"linux", "Darwin"}) {
        running_system(name);
        EXPECT_EQ(select_install_profile(), 0);
        EXPECT_EQ(os_kind, os_linux);
    }
    os_kind = os_netbsd;
    EXPECT_EQ(detect_os(), 0);
    EXPECT_EQ(os_kind, os_netbsd);
}

TEST_F(SelectInstallProfile, leaves_the_selection_alone_where_the_systems_name_cannot_be_had) {
    os_kind = os_netbsd;
    replaced_calls.uname = [](utsname* host) {
        std::snprintf(host->sysname, sizeof host->sysname, "SunOS");
        return -1;
    };
    EXPECT_EQ(select_install_profile(), 1);
    EXPECT_EQ(os_kind, os_netbsd);
    EXPECT_STREQ(profile_doc_dir(), "/usr/pkg/teluma/share/doc/");
}

}  // namespace
