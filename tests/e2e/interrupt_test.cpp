// SIGINT, from the keyboard and from elsewhere, wherever the wizard may be: it ends with status 1
// and a text, and the terminal is as it was before.

#include "tests/e2e/dialogs.h"
#include "tests/e2e/endings.h"
#include "tests/e2e/stop_params.h"

namespace {

using InterruptedScreen = AtScreen;

INSTANTIATE_TEST_SUITE_P(Screens, InterruptedScreen, testing::ValuesIn(every_stop()), stop_name);

TEST_P(InterruptedScreen, by_ctrl_c_is_aborted) {
    wizard.press(Key::ctrl_c);
    EXPECT_TRUE(is_aborted(wizard));
}

TEST(Interrupt, by_the_signal_with_the_focus_on_a_button_ends_the_wizard) {
    WizardRun wizard;
    wizard.moveFocus(Stop::password, facts_of(Stop::password).back);
    wizard.signal(SIGINT);
    EXPECT_TRUE(is_aborted(wizard));
}

TEST(Interrupt, right_after_a_resize_ends_the_wizard) {
    WizardRun wizard;
    wizard.waitForScreen(Stop::password);
    wizard.resize(20, 72);
    wizard.press(Key::ctrl_c);
    EXPECT_TRUE(is_aborted(wizard));
}

// Where a Ctrl-C throws away what was typed before it, the wizard can be left reading a key that is
// gone, deaf to the interrupt.
TEST(Interrupt, leaves_the_keys_that_were_typed_before_it_in_the_terminal) {
    WizardRun wizard;
    wizard.waitForScreen(Stop::password);
    EXPECT_NE(wizard.modes().settings.c_lflag & NOFLSH, 0U);
}

using InterruptedDialog = AtDialog;

INSTANTIATE_TEST_SUITE_P(Dialogs, InterruptedDialog, every_dialog(), dialog_name);

TEST_P(InterruptedDialog, by_ctrl_c_is_aborted) {
    wizard.press(Key::ctrl_c);
    EXPECT_TRUE(is_aborted(wizard));
}

TEST_P(InterruptedDialog, after_a_resize_is_aborted) {
    wizard.resize(60, 200);
    wizard.waitForKey();
    wizard.press(Key::ctrl_c);
    EXPECT_TRUE(is_aborted(wizard));
}

}  // namespace
