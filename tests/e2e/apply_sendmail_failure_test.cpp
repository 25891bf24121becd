// An installation of the wrapper that fails: what the user and the system log are told, and the way
// on from there.

#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/e2e/apply_test.h"
#include "tests/e2e/focus.h"
#include "tests/e2e/frame.h"
#include "tests/support/files.h"
#include "tests/support/process.h"
#include "tests/support/server_account.h"
#include "tests/support/system_log.h"

namespace {

const char* const sendmail = "/usr/sbin/sendmail";
const char* const wrapper = "/opt/teluma/bin/sendmail";
const char* const other_wrapper = "/opt/teluma/bin/sendmail.away";

class ApplySendmailFailure : public ApplyTest {
  protected:
    ApplySendmailFailure() {
        askForLittle();
        answers.sendmail = true;
    }

    static void makeReadOnly(const std::string& directory, const std::string& how) {
        ASSERT_EQ(run_command({"mount", "-n", "-o", "remount,bind," + how, directory}).status,
                  exited(0));
    }

    void walkIntoFailure() {
        wizard.walkToTheEnd(answers);
        wizard.waitForText("Error!");
        wizard.waitForKey();
        EXPECT_EQ(words_in_frame(wizard.image()),
                  "Error! Could not configure sendmail wrapper! OK");
    }

    SystemLog log;
};

const std::vector<std::string> nothing;

TEST_F(ApplySendmailFailure, without_the_wrapper_is_logged_as_a_failed_chown) {
    ASSERT_EQ(rename(wrapper, other_wrapper), 0);
    walkIntoFailure();
    EXPECT_EQ(log.messages(),
              std::vector<std::string>{"<11>WIZARD: Unable to chown /opt/teluma/bin/sendmail"});
    EXPECT_FALSE(file_facts(sendmail).is_link);
}

TEST_F(ApplySendmailFailure, without_the_servers_account_is_logged_as_a_failed_chown) {
    remove_server_account();
    walkIntoFailure();
    EXPECT_EQ(log.messages(),
              std::vector<std::string>{"<11>WIZARD: Unable to chown /opt/teluma/bin/sendmail"});
    EXPECT_FALSE(file_facts(sendmail).is_link);
}

TEST_F(ApplySendmailFailure, to_rename_the_file_is_not_logged) {
    makeReadOnly("/usr/sbin", "ro");
    walkIntoFailure();
    EXPECT_EQ(log.messages(), nothing);
    EXPECT_FALSE(file_facts(sendmail).is_link);
}

TEST_F(ApplySendmailFailure, to_rename_the_link_is_not_logged) {
    unlink(sendmail);
    ASSERT_EQ(symlink("/usr/sbin/exim4", sendmail), 0);
    makeReadOnly("/usr/sbin", "ro");
    walkIntoFailure();
    EXPECT_EQ(log.messages(), nothing);
    EXPECT_EQ(link_target(sendmail), "/usr/sbin/exim4");
}

TEST_F(ApplySendmailFailure, to_remove_a_link_saved_before_is_logged) {
    unlink(sendmail);
    ASSERT_EQ(symlink("/usr/sbin/exim4", sendmail), 0);
    ASSERT_EQ(symlink("/usr/sbin/exim4", "/usr/sbin/sendmail.beforeteluma"), 0);
    makeReadOnly("/usr/sbin", "ro");
    walkIntoFailure();
    EXPECT_EQ(log.messages(),
              std::vector<std::string>{"<11>WIZARD: Unable to unlink file '/usr/sbin/sendmail'"});
}

TEST_F(ApplySendmailFailure, to_make_the_link_is_logged) {
    unlink(sendmail);
    makeReadOnly("/usr/sbin", "ro");
    walkIntoFailure();
    EXPECT_EQ(log.messages(),
              std::vector<std::string>{
                  "<11>WIZARD: Unable to symlink /opt/teluma/bin/sendmail to /usr/sbin/sendmail"});
}

TEST_F(ApplySendmailFailure, leads_back_to_its_screen_where_yes_tries_once_more) {
    makeReadOnly("/usr/sbin", "ro");
    walkIntoFailure();
    makeReadOnly("/usr/sbin", "rw");
    wizard.dismissError("sendmail wrapper");
    wizard.waitForScreen(Stop::sendmail);
    EXPECT_EQ(focus_on(wizard.image(), Stop::sendmail), 0);
    wizard.answerSendmail(true);
    ASSERT_EQ(wizard.finish(), exited(0));
    EXPECT_EQ(link_target(sendmail), wrapper);
    EXPECT_TRUE(exists("/usr/sbin/sendmail.beforeteluma"));
}

TEST_F(ApplySendmailFailure, does_not_make_the_next_run_hook_the_relay_method_in_again) {
    answers.relay = {};
    makeReadOnly("/usr/sbin", "ro");
    walkIntoFailure();
    makeReadOnly("/usr/sbin", "rw");
    const std::string filters = read_file(InstalledServer::filters);
    const std::vector<std::string> commands = server.commands();
    wizard.dismissError("sendmail wrapper");
    wizard.answerSendmail(true);
    ASSERT_EQ(wizard.finish(), exited(0));
    EXPECT_EQ(read_file(InstalledServer::filters), filters);
    EXPECT_EQ(server.commands(), commands);
}

TEST_F(ApplySendmailFailure, leaves_the_wrappers_owner_and_mode_as_they_were_set) {
    makeReadOnly("/usr/sbin", "ro");
    walkIntoFailure();
    EXPECT_EQ(file_facts(wrapper).mode, 06755u);
}

TEST_F(ApplySendmailFailure, is_left_behind_with_no) {
    makeReadOnly("/usr/sbin", "ro");
    walkIntoFailure();
    wizard.dismissError("sendmail wrapper");
    wizard.answerSendmail(false);
    wizard.waitForText(" OK ");
    EXPECT_TRUE(wizard.image().shows("--> configuring TELUMA sendmail ... "));
    EXPECT_FALSE(wizard.image().shows("sendmail ...  ... DONE"));
    EXPECT_EQ(wizard.finish(), exited(0));
}

}  // namespace
