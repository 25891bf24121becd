// Ctrl-C while the answers are applied: in every wait, with the server signalled if its process id
// is known.

#include <gtest/gtest.h>

#include <csignal>
#include <set>

#include "tests/e2e/apply_test.h"
#include "tests/e2e/apply_waits.h"
#include "tests/e2e/apply_wire.h"
#include "tests/e2e/endings.h"
#include "tests/support/case_name.h"
#include "tests/support/process.h"
#include "tests/support/wait_until.h"

namespace {

class ApplyInterrupt : public ApplyTest {
  protected:
    /// Presses Ctrl-C and expects the wizard to end as it does then.
    void interrupt() {
        wizard.press(Key::ctrl_c);
        EXPECT_TRUE(is_aborted(wizard));
    }
};

struct SilentCommand {
    std::string name;
    std::string rule;
};

std::string as_name(const std::string& command) {
    std::string name;
    for (const char character : command)
        name += std::isalnum(static_cast<unsigned char>(character)) != 0 ? character : '_';
    return name;
}

/// Every different command of the default run, but for the password, and what else the server may
/// be silent at.
std::vector<SilentCommand> silent_commands() {
    std::vector<SilentCommand> commands = {{"greeting", "connect * silent"},
                                           {"password", "password * silent"}};
    const Commands all = run_commands({});
    std::set<std::string> known = {all[0], all[2]};
    for (const std::string& command : all) {
        if (known.insert(command).second)
            commands.push_back({as_name(command), "=\"" + command + "\" 1 silent"});
    }
    return commands;
}

class ApplySilence : public ApplyInterrupt, public testing::WithParamInterface<SilentCommand> {};

TEST_P(ApplySilence, of_the_server_is_ended_by_ctrl_c_and_the_server_too) {
    server.faults(GetParam().rule + "\n");
    wizard.walkToTheEnd(answers);
    server.waitForLog("# fault: " + GetParam().rule);
    interrupt();
    server.waitForEnd();
    EXPECT_EQ(server.pid(), 0);
}

INSTANTIATE_TEST_SUITE_P(At, ApplySilence, testing::ValuesIn(silent_commands()), CaseName());

TEST_F(ApplyInterrupt, ends_the_wait_for_a_server_that_does_not_remove_its_pid_file) {
    server.faults("stop * stays\n");
    server.start();
    wizard.walkToTheEnd(answers);
    server.waitForLog("# stopped");
    interrupt();
    EXPECT_TRUE(server.commands().empty());
}

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
