// A failure for which an answer is to blame, or the host: the answer is corrected and the next run
// completes.

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>

#include "tests/e2e/apply_screen.h"
#include "tests/e2e/apply_test.h"
#include "tests/e2e/apply_wire.h"
#include "tests/e2e/frame.h"
#include "tests/support/files.h"
#include "tests/support/local_port.h"
#include "tests/support/server_account.h"

namespace {

class ApplyCorrection : public ApplyTest {
  protected:
    /// Presses "OK" in the "Error!" box and answers everything from the screen that comes.
    void answerAgain(Stop from) {
        wizard.waitForText("Error!");
        wizard.press(Key::enter);
        wizard.walkToTheEnd(answers, from);
        wizard.waitForText(" OK ");
    }

    void finish() { ASSERT_EQ(wizard.finish(), exited(0)); }

    long countCommands(const std::string& command) const {
        const Commands commands = server.commands();
        return std::count(commands.begin(), commands.end(), command);
    }
};

TEST_F(ApplyCorrection, of_a_domain_that_exists_creates_another) {
    askForLittle();
    server.save(
        "services smtpIncoming webadmin cli\n"
        "listener cli 127.0.0.1:9091\n"
        "enable cli yes\n"
        "domain taken.test /var/taken secret\n"
        "account taken.test postmaster\n");
    answers.domain = "taken.test";
    wizard.walkToTheEnd(answers);
    wizard.waitForText("Error!");
    wizard.waitForKey();
    EXPECT_EQ(words_in_frame(wizard.image()),
              "Error! Could not create the domain 'taken.test'! Please make sure this domain "
              "doesn't already exist! OK");
    answers.domain = "free.test";
    answerAgain(Stop::domain);
    finish();
    const std::string state = server.stateAfterRestart(answers.password);
    EXPECT_EQ(records(state, "domain"),
              (std::vector<std::string>{"free.test /var/opt/teluma/domains/free.test/ P0stmaster",
                                        "taken.test /var/taken secret"}));
    EXPECT_EQ(records(state, "primarydomain"), std::vector<std::string>{"free.test"});
}

TEST_F(ApplyCorrection, of_the_domain_leaves_its_line_as_it_was_added_first) {
    askForLittle();
    server.faults("\"create domain\" 1 refuse\n");
    answers.domain = "first.test";
    wizard.walkToTheEnd(answers);
    answers.domain = "second.test";
    answerAgain(Stop::domain);
    EXPECT_EQ(progress_lines(wizard.image()),
              (std::vector<std::string>{done("setting admin password"), done("connecting to CLI"),
                                        done("creating domain first.test"),
                                        done("configuring WebAdmin"), done("configuring SMTP")}));
    finish();
}

TEST_F(ApplyCorrection, of_the_aliases_to_fewer_adds_these) {
    server.faults("\"update domain name\" 1 refuse\n");
    wizard.walkToTheEnd(answers);
    answers.aliases = {false, true, false};
    answerAgain(Stop::aliases);
    finish();
    EXPECT_EQ(records(server.stateAfterRestart(answers.password), "domainalias localdomain"),
              std::vector<std::string>{"localhost"});
}

TEST_F(ApplyCorrection, of_the_aliases_to_none_marks_their_line_as_done) {
    askForLittle();
    answers.aliases = {true, true, true};
    server.faults("\"update domain name\" 1 refuse\n");
    wizard.walkToTheEnd(answers);
    answers.aliases = {false, false, false};
    answerAgain(Stop::aliases);
    EXPECT_EQ(progress_lines(wizard.image()),
              (std::vector<std::string>{done("setting admin password"), done("connecting to CLI"),
                                        done("creating domain localdomain"), done("adding aliases"),
                                        done("configuring WebAdmin"), done("configuring SMTP")}));
    finish();
    EXPECT_EQ(countCommands("update domain name localdomain"), 1);
}

TEST_F(ApplyCorrection, of_a_webadmin_port_that_the_server_has_for_something_else) {
    answers.webadmin.port = "110";
    wizard.walkToTheEnd(answers);
    wizard.waitForText("Could not configure webadmin!");
    answers.webadmin.port = "9000";
    answerAgain(Stop::webadmin);
    finish();
    EXPECT_EQ(records(server.stateAfterRestart(answers.password), "listener webadmin"),
              std::vector<std::string>{"0.0.0.0:9000"});
    EXPECT_EQ(countCommands("add alias root"), 1);
}

TEST_F(ApplyCorrection, of_the_smtp_interface_and_port_is_what_the_second_run_sets) {
    server.faults("=\"config server\" 3 refuse\n");
    wizard.walkToTheEnd(answers);
    wizard.waitForText("Could not configure SMTP!");
    answers.smtp = {2, "2525"};
    answerAgain(Stop::smtp);
    finish();
    EXPECT_EQ(records(server.stateAfterRestart(answers.password), "listener smtp-incoming"),
              std::vector<std::string>{"192.168.7.2:2525"});
    EXPECT_EQ(countCommands("config webadmin"), 2);
}

TEST_F(ApplyCorrection, of_the_services_leaves_out_the_one_that_failed) {
    server.faults("=\"config server\" 7 refuse\n");
    wizard.walkToTheEnd(answers);
    wizard.waitForText("Could not set services!");
    answers.services = {true, false, true};
    answerAgain(Stop::services);
    EXPECT_TRUE(wizard.image().shows("--> configuring IMAP ... "));
    EXPECT_FALSE(wizard.image().shows(done("configuring IMAP")));
    finish();
    EXPECT_EQ(
        records(server.stateAfterRestart(answers.password), "services"),
        std::vector<std::string>{"smtpIncoming smtpOutgoing processing webadmin cli pop3 webmail"});
    EXPECT_EQ(countCommands("config imap"), 0);
}

const char* const filters_away = "/var/opt/teluma/run/filters.away";

class ApplyRelayCorrection : public ApplyCorrection {
  protected:
    ApplyRelayCorrection() {
        askForLittle();
        answers.relay = {};
    }

    void walkIntoFailure() {
        wizard.walkToTheEnd(answers);
        wizard.waitForText("Could not configure relay!");
    }
};

TEST_F(ApplyRelayCorrection, of_a_missing_filters_script_lets_the_second_run_write_it) {
    ASSERT_EQ(rename(InstalledServer::filters, filters_away), 0);
    walkIntoFailure();
    ASSERT_EQ(rename(filters_away, InstalledServer::filters), 0);
    answerAgain(Stop::relay);
    EXPECT_TRUE(wizard.image().shows(done("configuring relay")));
    finish();
    EXPECT_NE(read_file(InstalledServer::filters).find("method wizard_generated_relay {"),
              std::string::npos);
    EXPECT_EQ(countCommands("show attr smtpfiltersfile"), 2);
    EXPECT_EQ(countCommands("show attr services"), 1);
}

TEST_F(ApplyRelayCorrection, to_no_network_goes_on_without_the_script) {
    ASSERT_EQ(rename(InstalledServer::filters, filters_away), 0);
    walkIntoFailure();
    answers.relay = {false, false, false};
    answerAgain(Stop::relay);
    EXPECT_FALSE(wizard.image().shows(done("configuring relay")));
    EXPECT_TRUE(wizard.image().shows("--> configuring relay ... "));
    finish();
    EXPECT_FALSE(exists(InstalledServer::filters));
}

TEST_F(ApplyRelayCorrection, of_an_attribute_that_the_server_does_not_tell) {
    server.faults("\"show attr smtpfiltersfile\" 1 refuse\n");
    walkIntoFailure();
    answerAgain(Stop::relay);
    finish();
    EXPECT_NE(read_file(InstalledServer::filters).find("method wizard_generated_relay {"),
              std::string::npos);
}

// The file was changed when its owner could not be; the next run adds its lines once more.
TEST_F(ApplyRelayCorrection, of_a_missing_server_account_adds_the_lines_again) {
    answers.relay = {true, false, false};
    write_file(InstalledServer::filters, "event onEhlo {\n}\n");
    const std::string accounts = read_file("/etc/passwd");
    remove_server_account();
    walkIntoFailure();
    const std::string call =
        "# Generated by Teluma configuration wizard\n"
        "call (wizard_generated_relay);\n";
    const std::string method =
        "method wizard_generated_relay {\n"
        "if (anyof( iprange (remoteSmtpIp, \"127.0.0.0/255.0.0.0\"))) { \n"
        " \tset(remoteDelivery, \"all\"); \n"
        "\t }\n"
        " }\n";
    EXPECT_EQ(read_file(InstalledServer::filters), "event onEhlo {\n" + call + "}\n}\n" + method);
    write_file("/etc/passwd", accounts);
    answerAgain(Stop::relay);
    finish();
    EXPECT_EQ(read_file(InstalledServer::filters),
              "event onEhlo {\n" + call + call + "}\n}\n" + method + " }\n" + method);
}

TEST_F(ApplyCorrection, does_not_check_a_port_again_that_was_found_free) {
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
    finish();
    EXPECT_EQ(taken.takeAll(), 0);
}

}  // namespace
