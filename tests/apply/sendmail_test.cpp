// The wrapper put in the place of the system's sendmail, and what the system log says of failures.

#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <syslog.h>
#include <unistd.h>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "apply/sendmail_install.h"
#include "tests/support/descriptor.h"
#include "tests/support/files.h"
#include "tests/support/server_account.h"
#include "tests/support/system_log.h"

namespace {

using Names = std::set<std::string>;
using Messages = std::vector<std::string>;

// Whether no file's mode can be set any more.
bool chmod_fails = false;

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

// Every name in /usr/sbin that begins with "sendmail".
Names names() {
    Names found;
    for (const auto& entry : std::filesystem::directory_iterator("/usr/sbin")) {
        const std::string name = entry.path().filename();
        if (name.compare(0, 8, "sendmail") == 0) found.insert(name);
    }
    return found;
}

// The wrapper and /usr/sbin of the sandbox that the test runs in, without a sendmail at first.
class Sendmail : public testing::Test {
  protected:
    Sendmail() { startOver(); }

    static void startOver() {
        for (const std::string& name : names()) unlink(("/usr/sbin/" + name).c_str());
    }

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

TEST_F(Sendmail, no_does_nothing_and_yes_makes_the_link_and_no_backup_of_nothing) {
    const FileFacts before = file_facts(wrapper);
    EXPECT_EQ(sendmail_install(0), 0);
    EXPECT_EQ(names(), Names{});
    EXPECT_EQ(file_facts(wrapper).mode, before.mode);
    EXPECT_EQ(file_facts(wrapper).owner, before.owner);
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

// Where that name is free and all others up to `last` are taken.
struct Backup {
    int number;
    int last;
};

TEST_F(Sendmail, is_saved_under_the_first_free_name_or_the_last_one) {
    for (const auto [number, last] :
         {Backup{0, -1}, {1, 0}, {2, 1}, {5, 9}, {99, 98}, {99, 99}, {99, 100}}) {
        for (const bool is_link : {false, true}) {
            startOver();
            make_backups(0, last);
            if (number < 99) unlink(backup(number).c_str());
            is_link ? make_link("/opt/mailer", sendmail) : write_file(sendmail, "original");
            expectInstalled();
            EXPECT_EQ(is_link ? link_target(backup(number)) : read_file(backup(number)),
                      is_link ? "/opt/mailer" : "original");
            for (int other = 0; other <= last; ++other) {
                if (other == number) continue;
                EXPECT_EQ(read_file(backup(other)), std::to_string(other));
            }
        }
    }
}

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
    startOver();
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

// One that differs at its end counts as another.
TEST_F(Sendmail, a_link_with_any_target_is_saved_whole_and_known_again) {
    for (const std::string& target :
         {std::string("/opt/mailer"), std::string(wrapper) + ".old",
          std::string("../../opt/teluma/bin/sendmail"), "/" + std::string(250, 't')}) {
        startOver();
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
}

using SendmailFailure = Sendmail;

TEST_F(SendmailFailure, without_the_servers_account_or_the_wrapper_changes_nothing) {
    write_file(sendmail, "original");
    const FileFacts before = file_facts(wrapper);
    if (server_user() != 0) {
        // Whose rights everybody would have.
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

TEST_F(SendmailFailure, when_the_wrappers_mode_cannot_be_set_is_another_result) {
    write_file(sendmail, "original");
    chmod_fails = true;
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

TEST_F(SendmailFailure, closes_the_log_which_was_open_before_there_was_anything_to_tell) {
    expectInstalled();
    unlink("/dev/log");
    SystemLog second_log;
    syslog(LOG_NOTICE, "probe");
    EXPECT_EQ(log.messages(), Messages{"<13>WIZARD: probe"});
    unlink(wrapper);
    EXPECT_EQ(sendmail_install(1), -1);
    EXPECT_EQ(log.messages().size(), 2u);
    syslog(LOG_NOTICE, "probe");
    ASSERT_EQ(second_log.messages().size(), 1u);
    EXPECT_EQ(second_log.messages()[0].find("WIZARD"), std::string::npos);
}

}  // namespace

// In the place of the C library's.
extern "C" int fchmod(int file, mode_t mode) noexcept {
    return chmod_fails ? -1 : static_cast<int>(syscall(SYS_fchmod, file, mode));
}
