// Steps that fail in a whole run: what the user is told, where that leads, and what comes of it
// when an answer, or the host, has been corrected.

#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/e2e/apply_screen.h"
#include "tests/e2e/apply_test.h"
#include "tests/e2e/endings.h"
#include "tests/support/case_name.h"
#include "tests/support/files.h"
#include "tests/support/golden.h"
#include "tests/support/process.h"
#include "tests/support/system_log.h"

namespace {

class ApplyFailure : public ApplyTest {};

TEST_F(ApplyFailure, of_the_login_ends_the_wizard_without_a_word_and_the_server) {
    server.faults("password * refuse\n");
    wizard.walkToTheEnd(answers);
    EXPECT_SCREEN(wizard, "golden/apply/login_failed");
    EXPECT_TRUE(server.isRunning());
    wizard.press(Key::enter);
    EXPECT_TRUE(ends_with(wizard, exited(1), ""));
    server.waitForEnd();
    EXPECT_EQ(server.commands(), (Lines{"-A Adm1n secret", "user admin", "Adm1n secret"}));
}

TEST_F(ApplyFailure, of_the_domain_leads_back_to_it_where_another_can_be_created) {
    askForLittle();
    answers.domain = "example.com";
    server.save(
        "services smtpIncoming webadmin cli\n"
        "listener cli 127.0.0.1:9091\n"
        "enable cli yes\n"
        "domain example.com /var/taken secret\n"
        "account example.com postmaster\n");
    wizard.walkToTheEnd(answers);
    EXPECT_SCREEN(wizard, "../apply/golden/domain_error");
    answers.domain = "free.test";
    answerAgain(Stop::domain);
    wait_for_progress(wizard, {done("setting admin password"), done("connecting to CLI"),
                               done("creating domain example.com"), done("configuring WebAdmin"),
                               done("configuring SMTP")});
    ASSERT_EQ(wizard.finish(), exited(0));
    const std::string state = server.stateAfterRestart(answers.password);
    EXPECT_EQ(records(state, "domain"),
              (Lines{"example.com /var/taken secret",
                     "free.test /var/opt/teluma/domains/free.test/ P0stmaster"}));
    EXPECT_EQ(records(state, "primarydomain"), Lines{"free.test"});
}

TEST_F(ApplyFailure, of_a_service_leads_back_to_the_services_and_a_second_run_repeats_nothing) {
    server.faults("=\"config server\" 7 refuse\n");
    runIntoError("Could not set services!");
    wizard.press(Key::enter);
    wizard.waitForScreen(Stop::services);
    EXPECT_EQ(focus_on(wizard.image(), Stop::services), 0);
    wizard.walkToTheEnd(answers, Stop::services);
    ASSERT_EQ(wizard.finish(), exited(0));
    EXPECT_EQ(server.commands(), wire({{"config server", 7}}));
}

TEST_F(ApplyFailure, after_which_the_user_leaves_by_exit_ends_the_server_too) {
    server.faults("\"create domain\" 1 refuse\n");
    wizard.walkToTheEnd(answers);
    wizard.dismissError("already exist!");
    EXPECT_FALSE(wizard.image().shows("-->"));
    EXPECT_TRUE(server.isRunning());
    wizard.pressBack(Stop::domain);
    wizard.pressBack(Stop::password);
    EXPECT_TRUE(ends_with(wizard, exited(0), "\nTELUMA Configuration Wizard Aborted!\n"));
    server.waitForEnd();
}

struct ReplyCase {
    const char* name;
    const char* rule;  // for the server's faults
};

class ApplyReply : public ApplyTest, public testing::WithParamInterface<ReplyCase> {};

TEST_P(ApplyReply, fails_the_step_and_never_reaches_the_screen) {
    server.faults(std::string("\"create domain\" 1 ") + GetParam().rule + "\n");
    answers.domain = "example.com";
    wizard.walkToTheEnd(answers);
    EXPECT_SCREEN(wizard, "../apply/golden/domain_error");
    EXPECT_EQ(wizard.output().find("-ERR"), std::string::npos);
}

const ReplyCase bad_replies[] = {{"of_refusal", "refuse"},
                                 {"of_garbage", "garbage-prompt 200"},
                                 {"with_a_line_of_256_characters", "overlong 256"}};

INSTANTIATE_TEST_SUITE_P(Bad, ApplyReply, testing::ValuesIn(bad_replies), CaseName());

class ApplySendmailFailure : public ApplyTest {
  protected:
    ApplySendmailFailure() {
        unlink("/usr/sbin/sendmail");
        remount("ro");
        askForLittle();
        answers.relay = {};
        answers.sendmail = true;
        runIntoError("Could not configure sendmail wrapper!");
    }

    static void remount(const std::string& how) {
        ASSERT_EQ(run_command({"mount", "-n", "-o", "remount,bind," + how, "/usr/sbin"}).status,
                  exited(0));
    }

    SystemLog log;
};

TEST_F(ApplySendmailFailure, is_logged_and_made_good_by_yes_which_does_nothing_else_again) {
    EXPECT_EQ(log.messages(), Lines{"<11>WIZARD: Unable to symlink /opt/teluma/bin/sendmail to "
                                    "/usr/sbin/sendmail"});
    const std::string filters = read_file(InstalledServer::filters);
    const Lines commands = server.commands();
    remount("rw");
    wizard.dismissError("sendmail wrapper");
    wizard.waitForScreen(Stop::sendmail);
    EXPECT_EQ(focus_on(wizard.image(), Stop::sendmail), 0);
    wizard.answerSendmail(true);
    ASSERT_EQ(wizard.finish(), exited(0));
    EXPECT_EQ(link_target("/usr/sbin/sendmail"), "/opt/teluma/bin/sendmail");
    EXPECT_EQ(read_file(InstalledServer::filters), filters);
    EXPECT_EQ(server.commands(), commands);
}

}  // namespace
