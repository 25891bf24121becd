// The private view as a program in the sandbox finds it. These cases run in sandboxes themselves.

#include <grp.h>
#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

#include <filesystem>
#include <set>

#include "tests/support/descriptor.h"
#include "tests/support/files.h"
#include "tests/support/local_port.h"
#include "tests/support/process.h"
#include "tests/support/system_log.h"

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

TEST(PrivateView, holds_the_stand_in_server_which_does_not_run_and_a_sendmail) {
    EXPECT_EQ(entries_of("/opt"), std::set<std::string>{"teluma"});
    EXPECT_EQ(entries_of("/var/opt"), std::set<std::string>{"teluma"});
    for (const char* program : {"/opt/teluma/bin/teluma", "/opt/teluma/bin/sendmail"})
        EXPECT_EQ(access(program, X_OK), 0) << program;
    EXPECT_TRUE(fs::exists("/var/opt/teluma/run/teluma.cfg"));
    EXPECT_FALSE(fs::exists("/var/opt/teluma/run/teluma.pid"));
    EXPECT_EQ(fs::current_path(), "/run/scratch");
    EXPECT_TRUE(fs::is_empty("/run/scratch"));
    EXPECT_EQ(domain_name(), "(none)");
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status("/usr/sbin/sendmail")));
    EXPECT_LT(fs::file_size("/usr/sbin/sendmail"), 1000U);
    EXPECT_EQ(access("/usr/sbin/sendmail", X_OK), 0);
    EXPECT_GT(entries_of("/usr/sbin").size(), 20U) << "the host's programs";
}

TEST(PrivateView, has_a_user_and_a_group_teluma_with_ids_of_their_own_beside_the_hosts) {
    EXPECT_STREQ(getpwuid(0)->pw_name, "root");
    EXPECT_NE(getpwnam("nobody"), nullptr);
    const passwd* user = getpwnam("teluma");
    ASSERT_NE(user, nullptr);
    const uid_t user_id = user->pw_uid;
    const gid_t group_id = user->pw_gid;
    ASSERT_EQ(chown("/opt/teluma/bin/sendmail", user_id, group_id), 0);
    EXPECT_EQ(file_facts("/opt/teluma/bin/sendmail").owner, user_id);
    if (user_id == 0) GTEST_SKIP() << "a user namespace without other ids";
    EXPECT_STREQ(getpwuid(user_id)->pw_name, "teluma");
    EXPECT_STREQ(getgrgid(group_id)->gr_name, "teluma");
}

TEST(PrivateView, resolves_localhost_and_no_other_name_at_once) {
    EXPECT_EQ(run_command({"getent", "ahostsv4", "localhost"}).status, exited(0));
    EXPECT_NE(run_command({"getent", "hosts", "name.that.nobody.has.test"}).status, exited(0));
}

TEST(PrivateView, can_be_written_to_and_has_room_for_a_listener_to_the_system_log) {
    for (const fs::path directory : {"/opt", "/var/opt", "/etc", "/usr/sbin", "/dev/shm"})
        EXPECT_TRUE(fs::create_directory(directory / "new")) << directory;
    EXPECT_NO_THROW(SystemLog());
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

/// The IPv4 interfaces in the kernel's order, one a line: name, far end, state, address.
std::string interfaces() {
    return run_command({"sh", "-c", "PATH=$PATH:/usr/sbin:/sbin ip -brief -4 address | tr -s ' '"})
        .out;
}

const std::string loopback = "lo UNKNOWN 127.0.0.1/8 \n";

TEST(DefaultInterfaces, are_the_loopback_and_two_networks) {
    EXPECT_EQ(interfaces(), loopback + "eth0@far0 UP 192.168.7.2/24 \neth1@far1 UP 10.20.0.5/8 \n");
}

TEST(LoopbackOnlyInterfaces, are_the_loopback_alone) { EXPECT_EQ(interfaces(), loopback); }

TEST(ListedInterfaces, keep_the_order_of_the_list_with_those_that_are_down) {
    EXPECT_EQ(interfaces(), loopback +
                                "wan9@far0 UP 192.168.7.9/16 \nlan1@far1 UP 192.168.1.5/24 \n"
                                "off2@far2 DOWN 10.9.8.7/30 \nlan0@far3 UP 192.168.1.6/24 \n");
}

TEST(ListedInterfaces, have_addresses_that_can_be_listened_at_and_reached) {
    LocalPort port(25);
    port.open("192.168.1.5");
    connection_to(25, "192.168.1.5");
    EXPECT_EQ(port.takeAll(), 1);
}

}  // namespace
