// SIGINT, from the keyboard and from elsewhere, wherever the wizard may be: it ends with status 1
// and a text, and the terminal is as it was before.

#include <csignal>

#include "tests/e2e/endings.h"
#include "tests/e2e/places.h"
#include "tests/support/process.h"
#include "tests/support/wait_until.h"

namespace {

TEST(Interrupt, by_ctrl_c_on_every_screen_ends_the_wizard) {
    for (const Stop stop : every_stop()) {
        SCOPED_TRACE(title_of(stop));
        WizardRun wizard;
        wizard.walk(Stop::password, stop);
        wizard.press(Key::ctrl_c);
        EXPECT_TRUE(is_aborted(wizard));
    }
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

using InterruptAt = WizardAt<WizardRun>;

INSTANTIATE_TEST_SUITE_P(Every, InterruptAt,
                         testing::ValuesIn(places_up_to(Place::before_connecting)), place_name);

TEST_P(InterruptAt, ends_the_wizard_and_the_server_if_it_is_known) {
    wizard.press(Key::ctrl_c);
    EXPECT_TRUE(is_aborted(wizard));
    stage.expectServerTold();
}

using ApplyStuckCommand = InterruptAt;

INSTANTIATE_TEST_SUITE_P(At, ApplyStuckCommand,
                         testing::Values(Place::password_command, Place::start_command),
                         place_name);

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
