// A shell with job control: in its background the wizard lets the terminal alone, and it has it
// back, whole, when it comes to the foreground.

#include <gtest/gtest.h>

#include <csignal>
#include <string>

#include "tests/e2e/key_wait.h"
#include "tests/e2e/wizard_run.h"
#include "tests/reliability/signals/wizard_signals.h"
#include "tests/support/files.h"
#include "tests/support/wait_until.h"

namespace {

constexpr const char* pid_file = "/run/scratch/pid";

class Background : public testing::Test {
  protected:
    Background() {
        shell.waitForText("# ");
        shell.type(WIZARD_PROGRAM "\n");
        waitForWizard();
    }

    // Waits until it is in the foreground and waits for a key.
    void waitForWizard() {
        shell.waitForText("Validate:");
        const auto waits = [this] {
            return shell.foregroundGroup() != shell.pid() && waits_for_key(shell.foregroundGroup());
        };
        wait_until(waits, "the wizard waited for a key");
        shell.waitForText("Validate:");
    }

    // Stops it as nothing could keep it from.
    void stopUnasked() {
        shell.signalForeground(SIGSTOP);
        shell.waitForText("Stopped");
    }

    // The shell reads this, runs it, and prints its result.
    void expectShellCalculates(const std::string& expression, const std::string& result) {
        shell.type("echo $((" + expression + "))\n");
        shell.waitForText(result);
    }

    // Has the shell end it, which takes note of that only when it goes on.
    void endByShell(const std::string& commands = "") {
        shell.type(commands + "kill %1; kill -CONT %1; wait\n");
        shell.waitForText("Aborted!");
        expectShellCalculates("42 + 1", "43");
    }

    // In the foreground the wizard takes a key and hides it, and can be interrupted.
    void useWizard() {
        waitForWizard();
        shell.type("a");
        shell.waitForText("*");
        EXPECT_FALSE(shell.modes().echo());
        interrupt();
    }

    void interrupt() {
        shell.type("\x03");
        shell.waitForText("Aborted!");
    }

    WizardRun shell{{{"env", "PS1=# ", "dash", "-i"}}};
};

TEST_F(Background, that_the_wizard_is_sent_to_stays_the_shells) {
    shell.type("\x1a");
    shell.waitForText("Stopped");
    shell.type("bg\n");
    expectShellCalculates("40 + 2", "42");
    expectShellCalculates("42 + 1", "43");
    EXPECT_FALSE(shell.alternateScreen());
    EXPECT_EQ(shell.modes(), shell.modesBefore());
    shell.type("fg\n");
    useWizard();
}

TEST_F(Background, has_no_part_in_the_echo_after_a_stop_that_nobody_asked_for) {
    stopUnasked();
    shell.type("stty sane\n");
    expectShellCalculates("40 + 2", "42");
    EXPECT_TRUE(shell.modes().echo());
    shell.type("fg\n");
    shell.waitGone("Stopped");
    useWizard();
}

TEST_F(Background, keeps_its_modes_when_the_wizard_is_ended_there) {
    stopUnasked();
    endByShell("stty sane -ixon; ");
    EXPECT_FALSE(shell.alternateScreen());
    EXPECT_TRUE(shell.modes().echo());
    EXPECT_EQ(shell.modes().settings.c_iflag & IXON, 0U);
}

TEST_F(Background, has_its_modes_back_when_the_wizard_is_ended_there) {
    stopUnasked();
    endByShell();
    EXPECT_EQ(shell.modes(), shell.modesBefore());
}

TEST_F(Background, is_where_a_wizard_waits_that_is_started_there) {
    interrupt();
    shell.type(WIZARD_PROGRAM " & echo $! >/run/scratch/pid\n");
    wait_until(
        [] {
            const std::string pid = exists(pid_file) ? read_file(pid_file) : "";
            return !pid.empty() && has_stopped(std::stoi(pid));
        },
        "the wizard had stopped");
    EXPECT_EQ(shell.modes(), shell.modesBefore());
    shell.type("fg\n");
    useWizard();
    expectShellCalculates("40 + 2", "42");
    EXPECT_EQ(shell.modes(), shell.modesBefore());
}

}  // namespace
