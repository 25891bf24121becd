// Standard output or error that is no terminal: passwords are not echoed then either, and the
// terminal that the keys come from gets its modes back.

#include <gtest/gtest.h>

#include <string>

#include "tests/e2e/wizard_run.h"
#include "tests/support/files.h"
#include "tests/support/wait_until.h"

namespace {

constexpr const char* wizard_program = WIZARD_PROGRAM;
constexpr const char* status_file = "/run/scratch/status";
constexpr const char* leave_by_exit = "\t\t\t\n";
constexpr const char* interrupt = "\x03";
constexpr const char* quit = "\x1c";

/// How a shell starts the wizard.
struct Redirection {
    const char* name;
    const char* behind;
};

class OtherStreams : public testing::TestWithParam<Redirection> {
  protected:
    static std::vector<std::string> command() {
        return {"sh", "-c", std::string(wizard_program) + GetParam().behind};
    }

    void waitForSilence() {
        wait_until([this] { return !terminal.modes().echo() && !terminal.modes().canonical(); },
                   "the terminal did not echo");
    }

    /// The shell may end before the wizard has.
    void waitForModes() {
        wait_until([this] { return terminal.modes() == terminal.modesBefore(); },
                   "the terminal had its modes back");
    }

    WizardRun terminal{command()};
};

INSTANTIATE_TEST_SUITE_P(
    To, OtherStreams,
    testing::Values(Redirection{"pipe", " | cat"}, Redirection{"silent_pipe", " 2>/dev/null | cat"},
                    Redirection{"pipe_of_both", " 2>&1 | cat"},
                    Redirection{"file", " >/run/scratch/screen"},
                    Redirection{"silent_file", " >/run/scratch/screen 2>/dev/null"},
                    Redirection{"no_error", " 2>/dev/null"}),
    [](const auto& redirection) { return redirection.param.name; });

TEST_P(OtherStreams, leave_no_password_on_the_terminal) {
    waitForSilence();
    terminal.type(std::string("secret") + leave_by_exit);
    terminal.waitExit();
    EXPECT_EQ(terminal.output().find("secret"), std::string::npos);
}

TEST_P(OtherStreams, leave_the_terminal_as_it_was_after_the_exit) {
    waitForSilence();
    terminal.type(leave_by_exit);
    EXPECT_EQ(terminal.waitExit(), exited(0));
    EXPECT_EQ(terminal.modes(), terminal.modesBefore());
}

TEST_P(OtherStreams, leave_the_terminal_as_it_was_after_an_interrupt) {
    waitForSilence();
    terminal.type(interrupt);
    waitForModes();
}

TEST_P(OtherStreams, leave_the_terminal_as_it_was_after_a_crash) {
    waitForSilence();
    terminal.type(quit);
    waitForModes();
}

TEST(PipedKeys, are_read_and_leave_the_terminal_as_it_was) {
    WizardRun wizard(std::vector<std::string>{
        "sh", "-c", std::string("printf '\\t\\t\\t\\n' | ") + wizard_program});
    EXPECT_EQ(wizard.waitExit(), exited(0));
    EXPECT_EQ(wizard.modes(), wizard.modesBefore());
}

TEST(PipedScreen, that_nobody_reads_any_more_ends_the_wizard) {
    WizardRun terminal(std::vector<std::string>{
        "sh", "-c",
        std::string("{ ") + wizard_program + "; echo $? >" + status_file + "; } | head -c 1"});
    const auto has_ended = [&] {
        terminal.type("a");
        return exists(status_file) && !read_file(status_file).empty();
    };
    wait_until(has_ended, "the wizard had ended");
    EXPECT_EQ(read_file(status_file), "1\n");
    EXPECT_EQ(terminal.modes(), terminal.modesBefore());
}

}  // namespace
