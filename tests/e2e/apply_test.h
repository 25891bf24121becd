#pragma once

#include <gtest/gtest.h>

#include "tests/e2e/frame.h"
#include "tests/e2e/wizard_run.h"
#include "tests/support/installed_server.h"

/// A host on which the server has been installed and the wizard was started. For sandboxed tests.
class ApplyTest : public testing::Test {
  protected:
    /// Answers every screen and waits until everything is done.
    void runToOk() {
        wizard.walkToTheEnd(answers);
        wizard.waitForText(" OK ");
    }

    /// Answers every screen and sees the wizard through to its end.
    void runThrough() {
        wizard.walkToTheEnd(answers);
        ASSERT_EQ(wizard.finish(), exited(0));
    }

    /// Answers every screen and expects an "Error!" box with these words.
    void runIntoError(const std::string& message) {
        wizard.walkToTheEnd(answers);
        wizard.waitForDialog("Error!");
        EXPECT_EQ(words_in_frame(wizard.image()), "Error! " + message + " OK");
    }

    /// Presses "OK" in an "Error!" box and answers every screen from the one that comes.
    void answerAgain(Stop from) {
        wizard.dismissError("Error!");
        wizard.walkToTheEnd(answers, from);
    }

    /// From now on no alias, service nor network is ticked and sendmail is let alone, for a test
    /// that is about other things.
    void askForLittle() {
        answers.aliases = {false, false, false};
        answers.services = {false, false, false};
        answers.relay = {false, false, false};
        answers.sendmail = false;
    }

    /// What the server has to be told, by all runs together if commands are refused.
    Lines wire(const std::vector<Refusal>& plan = {}) const {
        return joined(expected_wire(wire_answers(answers), plan));
    }

    Answers answers;
    InstalledServer server;
    WizardRun wizard;
};
