// Choosing a loopback interface for a listener is asked back.

#include <gtest/gtest.h>

#include <map>

#include "tests/e2e/frame.h"
#include "tests/e2e/stop_params.h"
#include "tests/e2e/wizard_run.h"
#include "tests/support/golden.h"

namespace {

constexpr int loopback_row = 1;

class LoopbackQuestion : public AtScreen {
  protected:
    LoopbackQuestion() {
        wizard.answerListener(GetParam(), {loopback_row});
        wizard.waitForText("WARNING!");
        wizard.waitForKey();
    }

    // Sees to it that the focus is on the list: only there do the cursor keys move the bar.
    void expectFocusOnList() {
        wizard.waitForScreen(GetParam());
        EXPECT_TRUE(wizard.image().shows("│$ lo "));
        wizard.press(Key::up);
        wizard.waitForText("│$ all ");
    }
};

INSTANTIATE_TEST_SUITE_P(Listeners, LoopbackQuestion, testing::ValuesIn(listener_stops()),
                         stop_name);

TEST_P(LoopbackQuestion, names_the_listener) {
    const std::map<Stop, std::string> listeners = {{Stop::webadmin, "WebAdmin interface"},
                                                   {Stop::smtp, "SMTP service"},
                                                   {Stop::pop3, "POP3 service"},
                                                   {Stop::imap, "IMAP service"},
                                                   {Stop::webmail, "WebMail service"}};
    EXPECT_EQ(words_in_frame(wizard.image()),
              "WARNING! Selecting 127.0.0.1 will enable access to " + listeners.at(GetParam()) +
                  " only from this machine and not remotely from other machines. Are you sure? No "
                  "Yes");
}

TEST_P(LoopbackQuestion, answered_with_yes_goes_on) {
    wizard.press(Key::tab);
    wizard.press(Key::enter);
    wizard.waitForScreen(nextStop());
}

TEST_P(LoopbackQuestion, answered_with_no_as_enter_does_at_once_stays_with_the_focus_on_the_list) {
    wizard.press(Key::enter);
    expectFocusOnList();
}

TEST_P(LoopbackQuestion, answered_with_no_after_two_tabs_stays_too) {
    wizard.pressTimes(Key::tab, 2);
    wizard.press(Key::space);
    expectFocusOnList();
}

TEST(LoopbackQuestionBox, looks_like_this_and_has_the_focus_on_no_until_tab_moves_it) {
    WizardRun wizard;
    wizard.walk(Stop::password, Stop::webadmin);
    wizard.answerListener(Stop::webadmin, {loopback_row});
    EXPECT_SCREEN(wizard, "golden/loopback_question");
    wizard.press(Key::tab);
    EXPECT_SCREEN(wizard, "golden/loopback_question_yes");
}

}  // namespace
