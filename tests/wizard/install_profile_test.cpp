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
    std::string data;     // the server's directory of what it changes
    std::string package;  // and of what was installed
    const char* binary;
    const char* placeholder;
};

// The documentation of the server's packages says where each system keeps it.
const Row rows[] = {
    {"Linux", 0, "/var/opt/teluma/", "/opt/teluma/", "bin/teluma", "unset1"},
    {"FreeBSD", 1, "/var/teluma/", "/usr/local/teluma/", "bin/teluma", "unset2"},
    {"NetBSD", 2, "/var/teluma/", "/usr/pkg/teluma/", "bin/teluma", "unset-34"},
    {"OpenBSD", 3, "/var/teluma/", "/usr/local/teluma/", "bin/teluma", "unset-34"},
    {"SunOS", 4, "/var/opt/teluma/", "/opt/teluma/", "bin/teluma ", "unset1"},
};

// What uname(2) says, and what it returns.
void running_system(const std::string& name, int result = 0) {
    replaced_calls.uname = [name, result](utsname* host) {
        std::snprintf(host->sysname, sizeof host->sysname, "%s", name.c_str());
        return result;
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

TEST_P(OnSystem, its_row_is_selected_and_all_rows_are_filled) {
    running_system(GetParam().name);
    EXPECT_EQ(select_install_profile(), 0);
    EXPECT_EQ(os_kind, GetParam().kind);
    for (const Row& row : rows) {
        const InstallProfile& profile = install_profiles[row.kind];
        EXPECT_EQ(profile.config_file, row.data + "run/teluma.cfg");
        EXPECT_EQ(profile.server_binary, row.package + row.binary);
        EXPECT_EQ(profile.pid_file, row.data + "run/teluma.pid");
        EXPECT_STREQ(profile.admin_password, row.placeholder);
        EXPECT_EQ(profile.domains_dir, row.data + "domains/");
        EXPECT_EQ(profile.doc_dir, row.package + "share/doc/");
    }
}

TEST_P(OnSystem, the_documentation_directory_is_the_rows_own_and_the_domains_a_new_copy) {
    running_system(GetParam().name);
    select_install_profile();
    const InstallProfile& profile = install_profiles[GetParam().kind];
    EXPECT_EQ(profile_doc_dir(), profile.doc_dir);
    const HeapText first(profile_domains_dir());
    const HeapText second(profile_domains_dir());
    EXPECT_STREQ(first.get(), profile.domains_dir);
    EXPECT_STREQ(second.get(), profile.domains_dir);
    EXPECT_NE(first.get(), second.get());
}

INSTANTIATE_TEST_SUITE_P(InstallProfile, OnSystem, testing::ValuesIn(rows), CaseName());

TEST_F(SelectInstallProfile, takes_the_row_of_this_system) {
    utsname host = {};
    ASSERT_EQ(uname(&host), 0);
    os_kind = os_sunos;
    EXPECT_EQ(select_install_profile(), 0);
    EXPECT_EQ(os_kind, os_kind_named(host.sysname));
}

TEST_F(SelectInstallProfile, leaves_the_selection_alone_where_the_system_has_no_row_or_no_name) {
    for (const int kind : {os_linux, os_netbsd}) {
        os_kind = kind;
        running_system("linux");
        EXPECT_EQ(select_install_profile(), 0);
        EXPECT_EQ(os_kind, kind);
        running_system("SunOS", -1);
        EXPECT_EQ(select_install_profile(), 1);
        EXPECT_EQ(os_kind, kind);
    }
    EXPECT_STREQ(profile_doc_dir(), "/usr/pkg/teluma/share/doc/");
}

}  // namespace
