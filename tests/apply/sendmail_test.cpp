// The wrapper put in the place of the system's sendmail, and what the system log says of failures.

#include <gtest/gtest.h>
#include <linux/capability.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <syslog.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "apply/sendmail_install.h"
#include "tests/support/case_name.h"
#include "tests/support/descriptor.h"
#include "tests/support/files.h"
#include "tests/support/server_account.h"
#include "tests/support/system_log.h"

namespace {

using Names = std::vector<std::string>;
using Messages = std::vector<std::string>;

constexpr const char* sendmail = "/usr/sbin/sendmail";
constexpr const char* wrapper = "/opt/teluma/bin/sendmail";

// The name of a backup: 0 for the one without a number.
std::string backup(int number) {
    const std::string base = "/usr/sbin/sendmail.beforeteluma";
    return number == 0 ? base : base + std::to_string(number);
}

// Makes the backups of these numbers, files that hold their numbers.
void make_backups(int first, int last) {
    for (int number = first; number <= last; ++number)
        write_file(backup(number), std::to_string(number));
}

void make_link(const std::string& target, const std::string& path) {
    checked(symlink(target.c_str(), path.c_str()), "symlink");
}

// Every name in /usr/sbin that begins with "sendmail", in order.
Names names() {
    Names found;
    for (const auto& entry : std::filesystem::directory_iterator("/usr/sbin")) {
        const std::string name = entry.path().filename();
        if (name.compare(0, 8, "sendmail") == 0) found.push_back(name);
    }
    std::sort(found.begin(), found.end());
    return found;
}

// The wrapper and /usr/sbin of the sandbox that the test runs in, without a sendmail at first.
class Sendmail : public testing::Test {
  protected:
    Sendmail() { unlink(sendmail); }

    void expectInstalled() {
        EXPECT_EQ(sendmail_install(1), 0);
        EXPECT_EQ(link_target(sendmail), wrapper);
        expect_server_owns(wrapper);
        EXPECT_EQ(file_facts(wrapper).mode, 06755u);
        EXPECT_EQ(log.messages(), Messages{});
    }

    // That the installation has this result, and that this error has been logged.
    void expectFailure(int result, const std::string& error) {
        EXPECT_EQ(sendmail_install(1), result);
        // Of the facility for user processes, an error: LOG_USER | LOG_ERR.
        EXPECT_EQ(log.messages(),
                  error.empty() ? Messages{} : Messages{"<11>WIZARD: Unable to " + error});
    }

    static void makeReadOnly() {
        checked(mount(nullptr, "/usr/sbin", nullptr, MS_REMOUNT | MS_RDONLY, nullptr), "mount");
    }

    SystemLog log;
};

TEST_F(Sendmail, no_does_nothing) {
    const FileFacts before = file_facts(wrapper);
    EXPECT_EQ(sendmail_install(0), 0);
    EXPECT_EQ(names(), Names{});
    EXPECT_EQ(file_facts(wrapper).mode, before.mode);
    EXPECT_EQ(file_facts(wrapper).owner, before.owner);
}

TEST_F(Sendmail, a_system_without_it_gets_the_link_and_no_backup) {
    expectInstalled();
    EXPECT_EQ(names(), Names{"sendmail"});
}

TEST_F(Sendmail, running_it_twice_leaves_one_link_and_one_backup) {
    write_file(sendmail, "original", 0751);
    expectInstalled();
    chmod(wrapper, 0700);
    expectInstalled();
    EXPECT_EQ(names(), (Names{"sendmail", "sendmail.beforeteluma"}));
    EXPECT_EQ(read_file(backup(0)), "original");
    EXPECT_EQ(file_facts(backup(0)).mode, 0751u);
}

TEST_F(Sendmail, a_link_to_the_wrapper_stays) {
    make_link(wrapper, sendmail);
    make_backups(0, 1);
    expectInstalled();
    EXPECT_EQ(names(), (Names{"sendmail", "sendmail.beforeteluma", "sendmail.beforeteluma1"}));
}

// Backups that are there, as ranges of numbers, and the number that the next one gets.
struct Backups {
    const char* name;
    std::vector<std::pair<int, int>> ranges;
    int next;
};

class SendmailBackups : public Sendmail, public testing::WithParamInterface<Backups> {
  protected:
    void SetUp() override {
        for (const auto& [first, last] : GetParam().ranges) make_backups(first, last);
    }

    void TearDown() override {
        for (const auto& [first, last] : GetParam().ranges) {
            for (int number = first; number <= last; ++number) {
                if (number != GetParam().next) {
                    EXPECT_EQ(read_file(backup(number)), std::to_string(number));
                }
            }
        }
    }
};

TEST_P(SendmailBackups, of_a_file) {
    write_file(sendmail, "original");
    expectInstalled();
    EXPECT_EQ(read_file(backup(GetParam().next)), "original");
}

TEST_P(SendmailBackups, of_a_link) {
    make_link("/opt/mailer", sendmail);
    expectInstalled();
    EXPECT_EQ(link_target(backup(GetParam().next)), "/opt/mailer");
}

const Backups every_backups[] = {{"none", {}, 0},
                                 {"the_bare_name", {{0, 0}}, 1},
                                 {"suffix_1_too", {{0, 1}}, 2},
                                 {"a_gap", {{0, 4}, {6, 9}}, 5},
                                 {"all_to_98", {{0, 98}}, 99},
                                 {"all_to_99_of_which_the_last_is_overwritten", {{0, 99}}, 99},
                                 {"more_than_count", {{0, 100}}, 99}};

INSTANTIATE_TEST_SUITE_P(With, SendmailBackups, testing::ValuesIn(every_backups), CaseName());

TEST_F(Sendmail, a_backup_name_taken_by_a_directory_or_a_dangling_link_is_not_free) {
    mkdir(backup(0).c_str(), 0755);
    make_link("/nowhere", backup(1));
    write_file(sendmail, "original");
    expectInstalled();
    EXPECT_TRUE(file_facts(backup(0)).is_directory);
    EXPECT_EQ(link_target(backup(1)), "/nowhere");
    EXPECT_EQ(read_file(backup(2)), "original");
}

TEST_F(Sendmail, a_link_that_a_backup_has_saved_is_only_removed) {
    make_link("/opt/mailer", sendmail);
    make_backups(0, 1);
    make_link("/opt/other", backup(2));
    make_link("/opt/mailer", backup(3));
    expectInstalled();
    EXPECT_EQ(names().size(), 5u);
    EXPECT_EQ(link_target(backup(3)), "/opt/mailer");
}

TEST_F(Sendmail, the_last_suffix_may_be_the_saved_link) {
    make_link("/opt/mailer", sendmail);
    make_backups(0, 98);
    make_link("/opt/mailer", backup(99));
    expectInstalled();
    EXPECT_EQ(read_file(backup(98)), "98");
    EXPECT_EQ(link_target(backup(99)), "/opt/mailer");
}

TEST_F(Sendmail, a_saved_link_after_the_first_free_name_is_not_looked_for) {
    mkdir("/opt/mailer", 0755);
    make_link("/opt/mailer", sendmail);
    make_link("/opt/mailer", backup(1));
    expectInstalled();
    EXPECT_EQ(link_target(backup(0)), "/opt/mailer");
    EXPECT_EQ(link_target(backup(1)), "/opt/mailer");
}

class SendmailLink : public Sendmail, public testing::WithParamInterface<std::string> {};

// One that differs at its end counts as another.
TEST_P(SendmailLink, with_this_target_is_saved_whole_and_known_again) {
    const std::string target = GetParam();
    make_link(target + "2", backup(0));
    make_link(target.substr(0, target.size() - 1), backup(1));
    for (int time = 0; time < 2; ++time) {
        make_link(target, sendmail);
        expectInstalled();
        EXPECT_EQ(link_target(backup(2)), target);
        unlink(sendmail);
    }
    EXPECT_FALSE(exists(backup(3)));
}

INSTANTIATE_TEST_SUITE_P(Every, SendmailLink,
                         testing::Values("/opt/mailer", std::string(wrapper) + ".old",
                                         "../../opt/teluma/bin/sendmail",
                                         "/" + std::string(250, 't')));

using SendmailFailure = Sendmail;

TEST_F(SendmailFailure, without_the_servers_account_or_the_wrapper_changes_nothing) {
    write_file(sendmail, "original");
    const FileFacts before = file_facts(wrapper);
    if (server_user() != 0) {
        // Whose rights everybody would have.
        const std::string users = read_file("/etc/passwd");
        remove_server_account();
        write_file("/etc/passwd", read_file("/etc/passwd") + "teluma:x:0:0::/:/bin/sh\n");
        expectFailure(-1, "chown /opt/teluma/bin/sendmail");
    }
    remove_server_account();
    EXPECT_EQ(sendmail_install(1), -1);
    EXPECT_EQ(file_facts(wrapper).mode, before.mode);
    unlink(wrapper);
    EXPECT_EQ(sendmail_install(1), -1);
    EXPECT_EQ(read_file(sendmail), "original");
    for (const std::string& message : log.messages())
        EXPECT_EQ(message, "<11>WIZARD: Unable to chown /opt/teluma/bin/sendmail");
}

// Takes the right to change the modes of other users' files from this process.
void drop_right_to_change_modes() {
    __user_cap_header_struct header = {_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct data[_LINUX_CAPABILITY_U32S_3];
    checked(static_cast<int>(syscall(SYS_capget, &header, data)), "capget");
    data[0].effective &= ~(1U << CAP_FOWNER);
    checked(static_cast<int>(syscall(SYS_capset, &header, data)), "capset");
}

TEST_F(SendmailFailure, when_the_wrappers_mode_cannot_be_set_is_another_result) {
    chown(wrapper, 12, 34);
    drop_right_to_change_modes();
    if (chmod(wrapper, 0755) == 0) GTEST_SKIP() << "a user namespace without other ids";
    write_file(sendmail, "original");
    expectFailure(1, "chmod /opt/teluma/bin/sendmail");
    EXPECT_EQ(read_file(sendmail), "original");
}

TEST_F(SendmailFailure, when_a_file_or_a_link_cannot_be_renamed_is_not_logged) {
    make_backups(0, 98);
    mkdir(backup(99).c_str(), 0755);
    write_file(sendmail, "original");
    expectFailure(-1, "");
    EXPECT_EQ(read_file(sendmail), "original");
    unlink(sendmail);
    make_link("/opt/mailer", sendmail);
    expectFailure(-1, "");
    EXPECT_EQ(link_target(sendmail), "/opt/mailer");
}

TEST_F(SendmailFailure, when_a_saved_link_cannot_be_removed) {
    make_link("/opt/mailer", sendmail);
    make_link("/opt/mailer", backup(0));
    makeReadOnly();
    expectFailure(-1, "unlink file '/usr/sbin/sendmail'");
    EXPECT_EQ(link_target(sendmail), "/opt/mailer");
}

TEST_F(SendmailFailure, when_the_link_cannot_be_made) {
    makeReadOnly();
    expectFailure(-1, "symlink /opt/teluma/bin/sendmail to /usr/sbin/sendmail");
    EXPECT_EQ(file_facts(wrapper).mode, 06755u);
}

TEST_F(SendmailFailure, on_a_system_without_a_log_is_told_by_the_result_alone) {
    unlink("/dev/log");
    unlink(wrapper);
    expectFailure(-1, "");
}

// The log goes away and comes back.
class SendmailLog : public Sendmail {
  protected:
    Messages probeOfAnotherLog() {
        unlink("/dev/log");
        secondLog.emplace();
        syslog(LOG_NOTICE, "probe");
        return secondLog->messages();
    }

    std::optional<SystemLog> secondLog;
};

TEST_F(SendmailLog, is_opened_before_there_is_anything_to_tell) {
    expectInstalled();
    EXPECT_EQ(probeOfAnotherLog(), Messages{});
    EXPECT_EQ(log.messages(), Messages{"<13>WIZARD: probe"});
}

TEST_F(SendmailLog, is_closed_after_a_failure) {
    unlink(wrapper);
    EXPECT_EQ(sendmail_install(1), -1);
    const Messages messages = probeOfAnotherLog();
    EXPECT_EQ(log.messages().size(), 1u);
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_EQ(messages[0].find("WIZARD"), std::string::npos);
}

}  // namespace
