// Installations of the sendmail wrapper that fail, and what the system log says of them.

#include <gtest/gtest.h>
#include <linux/capability.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <syslog.h>
#include <unistd.h>

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "apply/sendmail_install.h"
#include "tests/apply/sendmail_case.h"
#include "tests/support/descriptor.h"
#include "tests/support/files.h"
#include "tests/support/server_account.h"

namespace {

using Messages = std::vector<std::string>;

// Of the facility for user processes, an error: LOG_USER | LOG_ERR.
const std::string error = "<11>WIZARD: ";

class SendmailFailure : public SendmailCase {
  protected:
    void expectFailure(int result, const Messages& messages) {
        EXPECT_EQ(sendmail_install(1), result);
        EXPECT_EQ(log.messages(), messages);
    }
};

TEST_F(SendmailFailure, without_the_servers_account) {
    remove_server_account();
    write_file(sendmail, "original");
    const FileFacts before = file_facts(wrapper);
    expectFailure(-1, {error + "Unable to chown /opt/teluma/bin/sendmail"});
    EXPECT_EQ(read_file(sendmail), "original");
    EXPECT_EQ(file_facts(wrapper).mode, before.mode);
}

TEST_F(SendmailFailure, when_the_servers_account_has_the_rights_of_root) {
    if (server_user() == 0)
        GTEST_SKIP() << "a user namespace without other ids";
    remove_server_account();
    write_file("/etc/passwd", read_file("/etc/passwd") + "teluma:x:0:0::/:/bin/sh\n");
    const FileFacts before = file_facts(wrapper);
    expectFailure(-1, {error + "Unable to chown /opt/teluma/bin/sendmail"});
    EXPECT_EQ(file_facts(wrapper).mode, before.mode);
}

TEST_F(SendmailFailure, without_the_wrapper) {
    unlink(wrapper);
    write_file(sendmail, "original");
    expectFailure(-1, {error + "Unable to chown /opt/teluma/bin/sendmail"});
    EXPECT_EQ(read_file(sendmail), "original");
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
    if (chmod(wrapper, 0755) == 0)
        GTEST_SKIP() << "a user namespace without other ids";
    write_file(sendmail, "original");
    expectFailure(1, {error + "Unable to chmod /opt/teluma/bin/sendmail"});
    EXPECT_EQ(read_file(sendmail), "original");
}

TEST_F(SendmailFailure, when_a_file_cannot_be_renamed_is_not_logged) {
    makeBackups(0, 98);
    mkdir(backup(99).c_str(), 0755);
    write_file(sendmail, "original");
    expectFailure(-1, {});
    EXPECT_EQ(read_file(sendmail), "original");
    expectWrapperPrepared();
}

TEST_F(SendmailFailure, when_a_link_cannot_be_renamed_is_not_logged) {
    makeBackups(0, 98);
    mkdir(backup(99).c_str(), 0755);
    link("/opt/mailer", sendmail);
    expectFailure(-1, {});
    EXPECT_EQ(link_target(sendmail), "/opt/mailer");
}

TEST_F(SendmailFailure, when_a_saved_link_cannot_be_removed) {
    link("/opt/mailer", sendmail);
    link("/opt/mailer", backup(0));
    makeReadOnly();
    expectFailure(-1, {error + "Unable to unlink file '/usr/sbin/sendmail'"});
    EXPECT_EQ(link_target(sendmail), "/opt/mailer");
}

TEST_F(SendmailFailure, when_the_link_cannot_be_made) {
    makeReadOnly();
    expectFailure(-1, {error + "Unable to symlink /opt/teluma/bin/sendmail to /usr/sbin/sendmail"});
    expectWrapperPrepared();
}

TEST_F(SendmailFailure, on_a_system_without_a_log_is_told_by_the_result_alone) {
    unlink("/dev/log");
    unlink(wrapper);
    expectFailure(-1, {});
}

// In a sandbox of their own, where log can go away and come back.
class SendmailLog : public SendmailCase {
  protected:
    std::optional<SystemLog> second_log;

    void replaceLog() {
        unlink("/dev/log");
        second_log.emplace();
    }
};

TEST_F(SendmailLog, is_opened_before_there_is_anything_to_tell) {
    expectInstalled();
    replaceLog();
    syslog(LOG_NOTICE, "probe");
    EXPECT_EQ(log.messages(), Messages{"<13>WIZARD: probe"});
}

TEST_F(SendmailLog, is_closed_after_a_failure) {
    unlink(wrapper);
    EXPECT_EQ(sendmail_install(1), -1);
    replaceLog();
    syslog(LOG_NOTICE, "probe");
    EXPECT_EQ(log.messages().size(), 1u);
    ASSERT_EQ(second_log->messages().size(), 1u);
    EXPECT_EQ(second_log->messages()[0].find("WIZARD"), std::string::npos);
}

}  // namespace
