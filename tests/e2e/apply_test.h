#pragma once

#include <gtest/gtest.h>

#include "tests/e2e/wizard_run.h"
#include "tests/support/installed_server.h"

/// What the user is told when the login has failed.
constexpr const char* login_message =
    "Could not login to Teluma server! Please make sure that the CLI port is not in use!";

/// A host on which the server has been installed and the wizard was started. For sandboxed tests.
class ApplyTest : public testing::Test {
  protected:
    /// Answers every screen and sees the wizard through to its end.
    void runThrough() {
        wizard.walkToTheEnd(answers);
        ASSERT_EQ(wizard.finish(), exited(0));
    }

    /// From now on no alias, service nor network is ticked and sendmail is let alone, for a test
    /// that is about other things.
    void askForLittle() {
        answers.aliases = answers.services = answers.relay = {false, false, false};
        answers.sendmail = false;
    }

    /// What the server has to be told.
    Lines wire() const { return joined(expected_wire(wire_answers(answers))); }

    Answers answers;
    InstalledServer server;
    WizardRun wizard;
};
