// What is typed while the wizard does not read is meant for nobody but the wizard: the shell behind
// it would run it, as root, and keep it in its history.

#include <functional>

#include "tests/e2e/apply_waits.h"
#include "tests/e2e/endings.h"
#include "tests/reliability/signals/deaths.h"
#include "tests/reliability/signals/stopping.h"
#include "tests/support/wait_until.h"

namespace {

constexpr const char* command = "id\n";

class TypedAhead : public testing::Test {
  protected:
    /// Types a command that the wizard does not read: it waits for a server that says nothing.
    void typeCommand() {
        wizard().type(command);
        wait_until([this] { return wizard().hasUnreadInput(); }, "the command was typed");
    }

    WizardRun& wizard() { return dying.run(); }

    ApplyStage stage{ApplyWait::silent_server};
    DyingWizard dying;
};

class TypedAheadOfDeath : public TypedAhead, public testing::WithParamInterface<Death> {};

TEST_P(TypedAheadOfDeath, is_thrown_away) {
    stage.open(wizard());
    typeCommand();
    dying.dieOf(GetParam());
}

std::string death_name(const testing::TestParamInfo<Death>& info) {
    return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(Requests, TypedAheadOfDeath, every_request_to_end(), death_name);
INSTANTIATE_TEST_SUITE_P(Crashes, TypedAheadOfDeath, every_crash(), death_name);

TEST_F(TypedAhead, of_the_interrupt_key_is_thrown_away) {
    stage.open(wizard());
    wizard().type(std::string(command) + "\x03");
    EXPECT_TRUE(is_aborted(wizard()));
}

TEST_F(TypedAhead, of_the_quit_key_is_thrown_away) {
    stage.open(wizard());
    wizard().type(std::string(command) + "\x1c");
    EXPECT_EQ(wizard().waitExit(), killed_by(SIGQUIT));
    EXPECT_TRUE(leaves_terminal_usable(wizard()));
}

TEST_F(TypedAhead, of_the_stop_key_is_thrown_away) {
    stage.open(wizard());
    wizard().type(std::string(command) + "\x1a");
    wait_until_stopped(wizard());
    EXPECT_TRUE(leaves_terminal_usable(wizard()));
}

TEST_F(TypedAhead, of_too_small_a_terminal_is_thrown_away) {
    stage.open(wizard());
    typeCommand();
    typeCommand();
    wizard().resize(19, 71);
    EXPECT_EQ(wizard().waitExit(), exited(0));
    EXPECT_TRUE(leaves_terminal_usable(wizard()));
}

/// A place at which a key ends the wizard.
struct KeyThatEnds {
    const char* name;
    std::function<void(WizardRun&)> open;
    std::string key;
    ExitStatus status;
};

class TypedAheadAfterKey : public testing::TestWithParam<KeyThatEnds> {};

std::string key_name(const testing::TestParamInfo<KeyThatEnds>& info) {
    return info.param.name;
}

void open_stage(WizardRun& wizard, ApplyWait wait) {
    ApplyStage(wait).open(wizard);
}

INSTANTIATE_TEST_SUITE_P(
    Keys, TypedAheadAfterKey,
    testing::Values(
        KeyThatEnds{"exit", [](WizardRun& w) { w.moveFocus(Stop::password, 3); }, "\n", exited(0)},
        KeyThatEnds{"failed_login", [](WizardRun& w) { open_stage(w, ApplyWait::login_error); },
                    "\n", exited(1)},
        KeyThatEnds{"final_ok", [](WizardRun& w) { open_stage(w, ApplyWait::final_ok); }, "\n",
                    exited(0)}),
    key_name);

TEST_P(TypedAheadAfterKey, is_thrown_away) {
    WizardRun wizard;
    GetParam().open(wizard);
    wizard.type(GetParam().key + command);
    EXPECT_EQ(wizard.waitExit(), GetParam().status);
    EXPECT_TRUE(leaves_terminal_usable(wizard));
}

}  // namespace
