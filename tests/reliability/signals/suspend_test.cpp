// Ctrl-Z: while the wizard is stopped the terminal is the user's, and when it goes on its screen is
// there again, at the size that the terminal then has.

#include "tests/e2e/apply_waits.h"
#include "tests/e2e/dialogs.h"
#include "tests/e2e/endings.h"
#include "tests/e2e/stop_params.h"
#include "tests/reliability/signals/stopping.h"
#include "tests/support/expect_screen.h"

namespace {

/// Stops and continues, expecting the terminal to be the user's in between and the same screen
/// afterwards.
void stop_and_go_on(WizardRun& wizard) {
    wizard.waitForKey();
    const TerminalModes modes = wizard.modes();
    const ScreenImage before = wizard.image();
    stop(wizard);
    EXPECT_TRUE(leaves_terminal_usable(wizard));
    go_on(wizard);
    wizard.waitForKey();
    EXPECT_SAME_LOOK(before, wizard.image());
    EXPECT_EQ(wizard.modes(), modes);
}

using StoppedScreen = AtScreen;

INSTANTIATE_TEST_SUITE_P(Screens, StoppedScreen, testing::ValuesIn(every_stop()), stop_name);

TEST_P(StoppedScreen, is_there_again_when_the_wizard_goes_on) {
    stop_and_go_on(wizard);
}

TEST_P(StoppedScreen, is_drawn_at_the_size_that_the_terminal_got_meanwhile) {
    stop(wizard);
    wizard.resize(50, 132);
    go_on(wizard);
    wizard.waitForKey();
    WizardRun calm(50, 132);
    calm.walk(Stop::password, GetParam());
    EXPECT_SAME_LOOK(calm.image(), wizard.image());
}

using StoppedDialog = AtDialog;

INSTANTIATE_TEST_SUITE_P(Dialogs, StoppedDialog, every_dialog(), dialog_name);

TEST_P(StoppedDialog, is_there_again_when_the_wizard_goes_on) {
    stop_and_go_on(wizard);
}

class StoppedApplyWait : public testing::TestWithParam<ApplyWait> {
  protected:
    ApplyStage stage{GetParam()};
    WizardRun wizard;
};

// The other waits are over after seconds, and the screen may go on to the next step meanwhile.
INSTANTIATE_TEST_SUITE_P(At, StoppedApplyWait,
                         testing::Values(ApplyWait::old_pid_file, ApplyWait::password_command,
                                         ApplyWait::connection, ApplyWait::silent_server,
                                         ApplyWait::step_error, ApplyWait::final_ok),
                         apply_wait_name);

TEST_P(StoppedApplyWait, is_there_again_when_the_wizard_goes_on) {
    stage.open(wizard);
    stop_and_go_on(wizard);
}

TEST(CtrlZ, stops_the_wizard_and_the_next_key_is_read_when_it_goes_on) {
    WizardRun wizard;
    wizard.waitForScreen(Stop::password);
    wizard.type("\x1a");
    wait_until_stopped(wizard);
    go_on(wizard);
    wizard.waitForKey();
    wizard.type("a");
    wizard.waitForText("*");
}

TEST(StoppedWizard, that_finds_too_small_a_terminal_ends) {
    WizardRun wizard;
    wizard.waitForScreen(Stop::password);
    stop(wizard);
    wizard.resize(19, 71);
    go_on(wizard);
    EXPECT_TRUE(ends_with(wizard, exited(0),
                          "Please enlarge your window so it will have at least 72 columns and 20 "
                          "lines!\n"));
}

}  // namespace
