// The box that lists what is done while the answers are applied.

#include <gtest/gtest.h>

#include "tests/e2e/apply_screen.h"
#include "tests/e2e/apply_test.h"
#include "tests/support/case_name.h"
#include "tests/support/golden.h"

namespace {

// Of 50 characters, which is as much as the field holds.
const char* const long_domain = "a234567890123456789012345678901234567890123456.com";

class ApplyProgress : public ApplyTest {
  protected:
    /// Waits until everything is done and returns the lines that are shown then.
    std::vector<std::string> linesAtTheEnd() {
        wizard.walkToTheEnd(answers);
        wizard.waitForText(" OK ");
        return progress_lines(wizard.image());
    }
};

TEST_F(ApplyProgress, shows_eight_lines_one_below_the_other) {
    answers.services = {true, true, false};
    answers.relay = {false, false, false};
    answers.sendmail = false;
    EXPECT_EQ(linesAtTheEnd(),
              (std::vector<std::string>{done("setting admin password"), done("connecting to CLI"),
                                        done("creating domain localdomain"), done("adding aliases"),
                                        done("configuring WebAdmin"), done("configuring SMTP"),
                                        done("configuring POP3"), done("configuring IMAP")}));
}

TEST_F(ApplyProgress, scrolls_at_the_ninth_line_to_show_the_newest_eight) {
    answers.relay = {false, false, false};
    answers.sendmail = false;
    EXPECT_EQ(linesAtTheEnd(), (std::vector<std::string>{
                                   done("connecting to CLI"), done("creating domain localdomain"),
                                   done("adding aliases"), done("configuring WebAdmin"),
                                   done("configuring SMTP"), done("configuring POP3"),
                                   done("configuring IMAP"), done("configuring WEBMAIL")}));
}

TEST_F(ApplyProgress, scrolls_a_line_that_still_runs_to_the_bottom) {
    server.faults("=\"config server\" 8 silent\n");
    wizard.walkToTheEnd(answers);
    wait_for_progress(wizard, {done("connecting to CLI"), done("creating domain localdomain"),
                               done("adding aliases"), done("configuring WebAdmin"),
                               done("configuring SMTP"), done("configuring POP3"),
                               done("configuring IMAP"), running("configuring WEBMAIL")});
}

TEST_F(ApplyProgress, has_no_line_for_the_list_of_services) {
    server.faults("=\"show attr services\" 1 silent\n");
    wizard.walkToTheEnd(answers);
    server.waitForLog("# fault: =\"show attr services\" 1 silent");
    wizard.waitForKey();
    EXPECT_EQ(progress_lines(wizard.image()),
              (std::vector<std::string>{done("setting admin password"), done("connecting to CLI"),
                                        done("creating domain localdomain"), done("adding aliases"),
                                        done("configuring WebAdmin"), done("configuring SMTP")}));
}

TEST_F(ApplyProgress, has_no_line_for_relaying_without_a_network) {
    answers.relay = {false, false, false};
    wizard.walkToTheEnd(answers);
    wizard.waitForText(" OK ");
    EXPECT_FALSE(wizard.image().shows("relay"));
}

TEST_F(ApplyProgress, shows_a_text_of_45_characters_whole) {
    askForLittle();
    answers.domain = "a2345678901234567890.test";
    EXPECT_EQ(linesAtTheEnd().at(2), "--> creating domain a2345678901234567890.test ...  ... DONE");
}

TEST_F(ApplyProgress, cuts_a_text_of_46_characters_to_45_and_two_dots) {
    askForLittle();
    answers.domain = "a23456789012345678901.test";
    EXPECT_EQ(linesAtTheEnd().at(2),
              "--> creating domain a23456789012345678901.tes.. ...  ... DONE");
}

TEST_F(ApplyProgress, cuts_the_longest_domain_name_and_no_other_text_of_it) {
    askForLittle();
    answers.domain = long_domain;
    EXPECT_EQ(linesAtTheEnd().at(2),
              "--> creating domain a234567890123456789012345.. ...  ... DONE");
    EXPECT_EQ(wizard.finish(), exited(0));
    EXPECT_NE(wizard.printedAfterwards().find("domain named '" + answers.domain + "' within"),
              std::string::npos);
    EXPECT_EQ(records(server.stateAfterRestart(answers.password), "primarydomain"),
              std::vector<std::string>{long_domain});
}

// The line of a long name is wider than the box when it is done.
TEST_F(ApplyProgress, leaves_the_box_whole_when_the_line_of_a_long_name_has_scrolled_away) {
    answers.domain = long_domain;
    wizard.walkToTheEnd(answers);
    wizard.waitForText(" OK ");
    EXPECT_SCREEN(wizard, "golden/apply/done_80x24");
}

TEST_F(ApplyProgress, of_an_earlier_run_is_shown_again_with_what_the_next_run_adds) {
    server.faults("\"create domain\" 1 refuse\n=\"add alias root\" 1 silent\n");
    wizard.walkToTheEnd(answers);
    wizard.dismissError("already exist!");
    EXPECT_FALSE(wizard.image().shows("-->"));
    wizard.walkToTheEnd(answers, Stop::domain);
    wait_for_progress(wizard, {done("setting admin password"), done("connecting to CLI"),
                               done("creating domain localdomain"), running("adding aliases")});
}

TEST_F(ApplyProgress, is_not_shown_beside_an_error) {
    server.faults("\"create domain\" 1 refuse\n");
    wizard.walkToTheEnd(answers);
    wizard.waitForText("Error!");
    wizard.waitForKey();
    EXPECT_SCREEN(wizard, "golden/apply/domain_failed");
}

TEST_F(ApplyProgress, waits_for_ok_by_enter_or_space_and_no_other_key) {
    askForLittle();
    wizard.walkToTheEnd(answers);
    wizard.waitForText(" OK ");
    for (const Key key : {Key::tab, Key::escape, Key::down, Key::backspace})
        wizard.press(key);
    wizard.type("OK");
    wizard.waitForKey();
    EXPECT_TRUE(server.isRunning());
    wizard.press(Key::space);
    EXPECT_EQ(wizard.waitExit(), exited(0));
}

struct TerminalSize {
    const char* name;
    int rows;
    int cols;
};

const TerminalSize terminal_sizes[] = {{"72x20", 20, 72}, {"80x24", 24, 80}, {"200x60", 60, 200}};

class ApplyProgressAt : public testing::TestWithParam<TerminalSize> {
  protected:
    InstalledServer server;
    WizardRun wizard{GetParam().rows, GetParam().cols};
};

TEST_P(ApplyProgressAt, looks_like_this_while_a_step_runs) {
    server.faults("\"create domain\" 1 silent\n");
    wizard.walkToTheEnd();
    wizard.waitForText("creating domain");
    EXPECT_SCREEN(wizard, "golden/apply/running_" + std::string(GetParam().name));
}

TEST_P(ApplyProgressAt, looks_like_this_when_all_is_done) {
    wizard.walkToTheEnd();
    wizard.waitForText(" OK ");
    EXPECT_SCREEN(wizard, "golden/apply/done_" + std::string(GetParam().name));
}

INSTANTIATE_TEST_SUITE_P(Size, ApplyProgressAt, testing::ValuesIn(terminal_sizes), CaseName());

}  // namespace
