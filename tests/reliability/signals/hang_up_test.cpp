// A terminal that goes away ends the wizard, wherever it is.

#include "tests/e2e/apply_waits.h"
#include "tests/e2e/dialogs.h"
#include "tests/e2e/endings.h"
#include "tests/e2e/stop_params.h"
#include "tests/reliability/signals/deaths.h"

namespace {

class HangUpOnScreen : public testing::TestWithParam<Stop> {};

INSTANTIATE_TEST_SUITE_P(Screens, HangUpOnScreen, testing::ValuesIn(every_stop()), stop_name);

TEST_P(HangUpOnScreen, ends_the_wizard) {
    DyingWizard wizard;
    wizard.run().walk(Stop::password, GetParam());
    wizard.dieOfHangUp();
}

class HangUpInDialog : public EveryDialog {};

INSTANTIATE_TEST_SUITE_P(Dialogs, HangUpInDialog, every_dialog(), dialog_name);

TEST_P(HangUpInDialog, ends_the_wizard) {
    DyingWizard wizard;
    stage.open(wizard.run());
    wizard.dieOfHangUp();
}

class HangUpInApplyWait : public testing::TestWithParam<ApplyWait> {};

INSTANTIATE_TEST_SUITE_P(At, HangUpInApplyWait, every_apply_wait(), apply_wait_name);

TEST_P(HangUpInApplyWait, ends_the_wizard_and_a_known_server) {
    ApplyStage stage(GetParam());
    DyingWizard wizard;
    stage.open(wizard.run());
    wizard.dieOfHangUp();
    stage.expectServerTold();
}

// No SIGHUP comes with it.
TEST(EndOfInput, on_the_keyboard_ends_the_wizard) {
    WizardRun wizard(std::vector<std::string>{"sh", "-c", "exec \"$0\" </dev/null"});
    EXPECT_TRUE(is_aborted(wizard));
}

}  // namespace
