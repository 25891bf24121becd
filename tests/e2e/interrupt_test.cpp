// SIGINT, from the keyboard and from elsewhere, wherever the wizard may be: it ends with status 1
// and a text, and the terminal is as it was before.

#include <csignal>

#include "tests/e2e/apply_waits.h"
#include "tests/e2e/dialogs.h"
#include "tests/e2e/endings.h"
#include "tests/e2e/stop_params.h"
#include "tests/support/process.h"
#include "tests/support/wait_until.h"

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

// While the answers are applied, the server is signalled if its process id is known.
class ApplyWaitInterrupt : public testing::TestWithParam<ApplyWait> {
  protected:
    ApplyWaitInterrupt() { stage.open(wizard); }

    ApplyStage stage{GetParam()};
    WizardRun wizard;
};

INSTANTIATE_TEST_SUITE_P(At, ApplyWaitInterrupt, every_apply_wait(), apply_wait_name);

TEST_P(ApplyWaitInterrupt, by_ctrl_c_ends_the_wizard_and_the_server_if_it_is_known) {
    wizard.press(Key::ctrl_c);
    EXPECT_TRUE(is_aborted(wizard));
    stage.expectServerTold();
}

using ApplyStuckCommand = ApplyWaitInterrupt;

INSTANTIATE_TEST_SUITE_P(At, ApplyStuckCommand,
                         testing::Values(ApplyWait::password_command, ApplyWait::start_command),
                         apply_wait_name);

TEST_P(ApplyStuckCommand, is_ended_by_ctrl_c) {
    const pid_t command = stage.command();
    wizard.press(Key::ctrl_c);
    EXPECT_TRUE(is_aborted(wizard));
    wait_until([command] { return !process_running(command); }, "the command had ended");
}

// No process id is known then, so nobody gets a signal from the wizard, its own group included.
TEST_P(ApplyStuckCommand, lives_on_when_the_wizard_alone_is_interrupted) {
    wizard.signal(SIGINT);
    EXPECT_TRUE(is_aborted(wizard));
    EXPECT_TRUE(process_running(stage.command()));
}

}  // namespace
