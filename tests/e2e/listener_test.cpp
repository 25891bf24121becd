// The port check of a listener's screen against a real port, and its two questions.

#include <gtest/gtest.h>

#include "tests/e2e/dialogs.h"
#include "tests/e2e/frame.h"
#include "tests/support/golden.h"

namespace {

constexpr int loopback_row = 1;
constexpr int ethernet_row = 2;

class Listener : public testing::Test {
  protected:
    Listener() { wizard.walk(Stop::password, Stop::webadmin); }

    WizardRun wizard;
};

TEST_F(Listener, at_a_taken_port_is_warned_of_unless_that_is_at_another_interface) {
    LocalPort program(9000);
    program.open("192.168.7.2");
    wizard.answerListener(Stop::webadmin, {ethernet_row});
    wizard.waitForDialog("Warning!");
    EXPECT_NE(words_in_frame(wizard.image()).find("interface 192.168.7.2."), std::string::npos);
    wizard.press(Key::tab);
    wizard.press(Key::enter);
    wizard.answerListener(Stop::webadmin, {ethernet_row + 1});
    wizard.pressBack(Stop::smtp);

    program.close();
    program.open();
    wizard.answerListener(Stop::webadmin, {});
    EXPECT_SCREEN(wizard, "../screens/golden/port_in_use_of_WebAdmin");
    wizard.press(Key::tab);
    EXPECT_SCREEN(wizard, "golden/port_warning_back");
    wizard.press(Key::tab);
    program.close();
    wizard.press(Key::enter);
    wizard.waitForScreen(Stop::smtp);
}

TEST_F(Listener, at_the_loopback_interface_is_asked_about) {
    wizard.answerListener(Stop::webadmin, {loopback_row});
    EXPECT_SCREEN(wizard, "../screens/golden/loopback_question_WebAdmin");
    wizard.press(Key::tab);
    EXPECT_SCREEN(wizard, "golden/loopback_question_yes");
    wizard.press(Key::tab);
    wizard.press(Key::enter);
    wizard.answerListener(Stop::webadmin, {loopback_row, "", true});
    wizard.waitForScreen(Stop::smtp);
}

}  // namespace
