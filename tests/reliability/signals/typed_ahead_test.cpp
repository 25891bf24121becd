// What is typed while the wizard does not read is meant for nobody but the wizard: the shell that
// runs when it has ended would run it, as root, and keep it in its history.

#include <gtest/gtest.h>

#include <csignal>

#include "tests/e2e/endings.h"
#include "tests/e2e/places.h"
#include "tests/reliability/signals/wizard_signals.h"
#include "tests/support/wait_until.h"

namespace {

constexpr const char* command = "id\n";

/// A command is typed that the wizard does not read: it waits for a server that says nothing.
class TypedAhead : public testing::Test {
  protected:
    TypedAhead() { stage.open(wizard); }

    void typeCommand() {
        wizard.type(command);
        wait_until([this] { return wizard.hasUnreadInput(); }, "the command was typed");
    }

    Stage stage{Place::silent_server};
    DyingWizard wizard;
};

class TypedAheadOfDeath : public TypedAhead, public testing::WithParamInterface<int> {};

TEST_P(TypedAheadOfDeath, is_thrown_away) {
    typeCommand();
    wizard.dieOf(GetParam());
}

INSTANTIATE_TEST_SUITE_P(By, TypedAheadOfDeath, testing::Values(SIGTERM, SIGSEGV, SIGQUIT),
                         testing::PrintToStringParamName());

TEST_F(TypedAhead, of_the_interrupt_key_is_thrown_away) {
    wizard.type(std::string(command) + "\x03");
    EXPECT_TRUE(is_aborted(wizard));
}

TEST_F(TypedAhead, of_the_stop_key_is_thrown_away) {
    wizard.type(std::string(command) + "\x1a");
    wait_until_stopped(wizard);
    EXPECT_TRUE(leaves_terminal_usable(wizard));
}

TEST_F(TypedAhead, of_too_small_a_terminal_is_thrown_away) {
    typeCommand();
    typeCommand();  // a resize takes some of it away
    wizard.resize(19, 71);
    EXPECT_TRUE(is_refused_as_too_small(wizard));
}

/// The keys that end the wizard on its first screen, and in a dialog where it ends.
TEST(TypedAheadAfterExit, is_thrown_away) {
    WizardRun wizard;
    wizard.moveFocus(Stop::password, facts_of(Stop::password).back);
    wizard.type(std::string("\n") + command);
    EXPECT_EQ(wizard.waitExit(), exited(0));
    EXPECT_TRUE(leaves_terminal_usable(wizard));
}

using TypedAheadAfterOk = WizardAt<WizardRun>;

INSTANTIATE_TEST_SUITE_P(In, TypedAheadAfterOk,
                         testing::Values(Place::login_error, Place::final_ok), place_name);

TEST_P(TypedAheadAfterOk, is_thrown_away) {
    wizard.type(std::string("\n") + command);
    EXPECT_EQ(wizard.waitExit(), exited(GetParam() == Place::final_ok ? 0 : 1));
    EXPECT_TRUE(leaves_terminal_usable(wizard));
}

}  // namespace
