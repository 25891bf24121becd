// Ctrl-C while the answers are applied: in every wait, with the server signalled if its process id
// is known.

#include <gtest/gtest.h>

#include <csignal>

#include "tests/e2e/apply_waits.h"
#include "tests/e2e/endings.h"
#include "tests/support/process.h"
#include "tests/support/wait_until.h"

namespace {

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

/// What the server is silent at, as a rule for its faults.
class ApplySilence : public testing::TestWithParam<const char*> {};

INSTANTIATE_TEST_SUITE_P(At, ApplySilence,
                         testing::Values("connect * silent", "password * silent",
                                         "=\"list listeners\" 1 silent",
                                         "=\"show attr services\" 1 silent"));

TEST_P(ApplySilence, of_the_server_is_ended_by_ctrl_c_and_the_server_too) {
    const InstalledServer server;
    WizardRun wizard;
    server.faults(std::string(GetParam()) + "\n");
    wizard.walkToTheEnd();
    server.waitForLog("# fault: " + std::string(GetParam()));
    wizard.press(Key::ctrl_c);
    EXPECT_TRUE(is_aborted(wizard));
    server.waitForEnd();
    EXPECT_EQ(server.pid(), 0);
}

}  // namespace
