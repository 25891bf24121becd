// The private view as a program in the sandbox finds it. These cases run in sandboxes themselves.

#include <grp.h>
#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <set>

#include "tests/support/descriptor.h"
#include "tests/support/files.h"
#include "tests/support/process.h"

namespace {

namespace fs = std::filesystem;

std::set<std::string> entries_of(const fs::path& directory) {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(directory))
        names.insert(entry.path().filename().string());
    return names;
}

std::string domain_name() {
    char name[65] = "";
    checked(getdomainname(name, sizeof name), "getdomainname");
    return name;
}

TEST(PrivateView, holds_the_stand_in_server_and_nothing_else_in_opt_and_var_opt) {
    EXPECT_EQ(entries_of("/opt"), std::set<std::string>{"teluma"});
    EXPECT_EQ(entries_of("/var/opt"), std::set<std::string>{"teluma"});
    EXPECT_EQ(access("/opt/teluma/bin/teluma", X_OK), 0);
    EXPECT_EQ(access("/opt/teluma/bin/sendmail", X_OK), 0);
    EXPECT_TRUE(fs::exists("/opt/teluma/share/doc/README"));
    EXPECT_TRUE(fs::exists("/opt/teluma/share/doc/REMOVE-OTHERS.txt"));
    EXPECT_TRUE(fs::exists("/var/opt/teluma/run/teluma.cfg"));
    EXPECT_TRUE(fs::is_directory("/var/opt/teluma/domains"));
}

TEST(PrivateView, does_not_start_the_server) {
    EXPECT_FALSE(fs::exists("/var/opt/teluma/run/teluma.pid"));
}

TEST(PrivateView, has_a_user_and_a_group_teluma_with_ids_of_their_own) {
    const passwd* user = getpwnam("teluma");
    ASSERT_NE(user, nullptr);
    const uid_t user_id = user->pw_uid;
    const gid_t group_id = user->pw_gid;
    if (user_id == 0)
        GTEST_SKIP() << "a user namespace without other ids";
    const passwd* found_by_id = getpwuid(user_id);
    ASSERT_NE(found_by_id, nullptr);
    EXPECT_STREQ(found_by_id->pw_name, "teluma");
    const group* group_by_id = getgrgid(group_id);
    ASSERT_NE(group_by_id, nullptr);
    EXPECT_STREQ(group_by_id->gr_name, "teluma");
}

TEST(PrivateView, keeps_the_hosts_other_users) {
    const passwd* root = getpwuid(0);
    ASSERT_NE(root, nullptr);
    EXPECT_STREQ(root->pw_name, "root");
    EXPECT_NE(getpwnam("nobody"), nullptr);
}

TEST(PrivateView, has_a_small_regular_file_as_sendmail_unless_told_otherwise) {
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status("/usr/sbin/sendmail")));
    EXPECT_LT(fs::file_size("/usr/sbin/sendmail"), 1000u);
    EXPECT_EQ(access("/usr/sbin/sendmail", X_OK), 0);
}

TEST(PrivateView, has_the_hosts_other_programs_in_usr_sbin) {
    EXPECT_GT(entries_of("/usr/sbin").size(), 20u);
}

TEST(PrivateView, has_no_domain_name_unless_told_otherwise) {
    EXPECT_EQ(domain_name(), "(none)");
}

TEST(PrivateView, starts_each_case_in_an_empty_directory_of_its_own) {
    EXPECT_EQ(fs::current_path(), "/run/scratch");
    EXPECT_TRUE(fs::is_empty("/run/scratch"));
}

TEST(PrivateView, resolves_localhost_and_no_other_name_at_once) {
    EXPECT_EQ(run_command({"getent", "ahostsv4", "localhost"}).status, exited(0));
    EXPECT_NE(run_command({"getent", "hosts", "name.that.nobody.has.test"}).status, exited(0));
}

TEST(PrivateView, leaves_the_place_of_the_system_log_free_for_a_listener) {
    const Descriptor listener(checked(socket(AF_UNIX, SOCK_DGRAM, 0), "socket"));
    const sockaddr_un log = {AF_UNIX, "/dev/log"};
    EXPECT_EQ(bind(listener.get(), reinterpret_cast<const sockaddr*>(&log), sizeof log), 0);
}

TEST(PrivateView, lets_the_owner_and_the_mode_of_the_wrapper_be_set) {
    const passwd* user = getpwnam("teluma");
    ASSERT_NE(user, nullptr);
    ASSERT_EQ(chown("/opt/teluma/bin/sendmail", user->pw_uid, user->pw_gid), 0);
    ASSERT_EQ(chmod("/opt/teluma/bin/sendmail", 06755), 0);
    struct stat status = {};
    ASSERT_EQ(stat("/opt/teluma/bin/sendmail", &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 06755u);
    EXPECT_EQ(status.st_uid, user->pw_uid);
}

TEST(NamedDomainView, has_the_domain_name_that_was_given) {
    EXPECT_EQ(domain_name(), "example.com");
}

TEST(NoSendmailView, has_no_sendmail_nor_a_backup_of_one) {
    for (const std::string& name : entries_of("/usr/sbin"))
        EXPECT_NE(name.rfind("sendmail", 0), 0u) << name;
}

TEST(LinkedSendmailView, has_the_link_that_was_given) {
    EXPECT_EQ(fs::read_symlink("/usr/sbin/sendmail"), "/usr/lib/other mailer");
}

// One case for each of several values, to be listed and run one by one.
class PrivateViewOf : public testing::TestWithParam<const char*> {};

TEST_P(PrivateViewOf, can_be_written_to) {
    EXPECT_TRUE(fs::create_directory(fs::path(GetParam()) / "new # [directory"));
}

INSTANTIATE_TEST_SUITE_P(Directories, PrivateViewOf,
                         testing::Values("/opt", "/var/opt", "/etc", "/usr/sbin", "/dev/shm"));

}  // namespace
