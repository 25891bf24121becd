// Steps that fail in a whole run: what the user is told, where that leads, and what comes of it
// when an answer, or the host, has been corrected.

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>

#include "tests/e2e/apply_screen.h"
#include "tests/e2e/apply_test.h"
#include "tests/e2e/endings.h"
#include "tests/e2e/focus.h"
#include "tests/support/files.h"
#include "tests/support/golden.h"
#include "tests/support/local_port.h"
#include "tests/support/process.h"
#include "tests/support/system_log.h"

namespace {

class ApplyLogin : public ApplyTest {
  protected:
    void failToLogIn() {
        runIntoError(
            "Could not login to Teluma server! Please make sure that the CLI port is not in use!");
    }

    /// Presses "OK" and expects the wizard to end without a word.
    void dismiss() {
        wizard.press(Key::enter);
        EXPECT_TRUE(ends_with(wizard, exited(1), ""));
    }
};

TEST_F(ApplyLogin, with_a_refused_password_ends_the_wizard_and_the_server) {
    server.faults("password * refuse\n");
    failToLogIn();
    EXPECT_SCREEN(wizard, "golden/apply/login_failed");
    EXPECT_TRUE(server.isRunning());
    dismiss();
    server.waitForEnd();
    EXPECT_EQ(server.commands(), (Lines{"-A Adm1n secret", "user admin", "Adm1n secret"}));
}

TEST_F(ApplyLogin, without_a_pid_file_in_time_ends_the_wizard_alone) {
    server.faults("start * missing\n");
    failToLogIn();
    dismiss();
    EXPECT_TRUE(server.isRunning());
    const Lines log = server.log();
    EXPECT_EQ(std::count(log.begin(), log.end(), "# connection 1 opened"), 0);
}

TEST_F(ApplyLogin, at_a_port_that_another_program_has_ends_the_wizard) {
    LocalPort other(9091);
    other.open("127.0.0.1");
    failToLogIn();
    dismiss();
    EXPECT_EQ(other.takeAll(), 0);
}

TEST_F(ApplyLogin, with_a_pid_file_of_nobody_ends_the_wizard_and_touches_nothing) {
    write_file(InstalledServer::pid_file, run_command({"sh", "-c", "echo $$"}).out);
    const std::string config = read_file(InstalledServer::config);
    failToLogIn();
    EXPECT_NE(wizard.output().find("... DONE"), std::string::npos);
    dismiss();
    EXPECT_EQ(server.log(), Lines{});
    EXPECT_EQ(read_file(InstalledServer::config), config);
    EXPECT_TRUE(exists(InstalledServer::pid_file));
}

class ApplyFailure : public ApplyTest {};

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

TEST_F(ApplyFailure, of_webadmin_is_made_good_by_a_run_that_leaves_the_contexts_first) {
    askForLittle();
    server.faults("=\"set enable yes\" 1 refuse\n");
    runIntoError("Could not configure webadmin!");
    answerAgain(Stop::webadmin);
    ASSERT_EQ(wizard.finish(), exited(0));
    EXPECT_EQ(server.commands(), wire({{"set enable yes"}}));
}

TEST_F(ApplyFailure, within_another_context_stays_until_ctrl_c_ends_the_wizard_and_the_server) {
    server.faults("=\"config sslcontrol\" 1 refuse\n");
    runIntoError("Could not configure SMTP!");
    Lines commands = server.commands();
    answerAgain(Stop::smtp);
    wizard.dismissError("Could not configure SMTP!");
    commands.emplace_back("config server");
    EXPECT_EQ(server.commands(), commands);
    wizard.waitForScreen(Stop::smtp);
    wizard.press(Key::ctrl_c);
    EXPECT_TRUE(is_aborted(wizard));
    server.waitForEnd();
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

TEST_F(ApplyFailure, of_relaying_is_no_reason_to_check_a_port_again_that_was_found_free) {
    askForLittle();
    answers.services = {false, false, true};
    answers.relay = {};
    server.faults("=\"config server\" 7 refuse\n");
    wizard.walkToTheEnd(answers);
    wizard.dismissError("Could not configure relay!");
    LocalPort taken(80);
    taken.open();
    wizard.pressBack(Stop::relay);
    answers.webmail.port = "80";
    wizard.walkToTheEnd(answers, Stop::webmail);
    EXPECT_EQ(wizard.finish(), exited(0));
    EXPECT_EQ(taken.takeAll(), 0);
}

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

TEST_F(ApplySendmailFailure, is_left_as_it_is_by_no) {
    wizard.dismissError("sendmail wrapper");
    wizard.answerSendmail(false);
    wizard.waitForText(" OK ");
    EXPECT_TRUE(wizard.image().shows("--> configuring TELUMA sendmail ... "));
    EXPECT_FALSE(wizard.image().shows("sendmail ...  ... DONE"));
    EXPECT_EQ(wizard.finish(), exited(0));
}

}  // namespace
