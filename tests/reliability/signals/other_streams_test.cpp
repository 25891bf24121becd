// Standard output or error that is no terminal: passwords are not echoed then either, and the
// terminal that the keys come from gets its modes back.

#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "tests/e2e/wizard_run.h"
#include "tests/support/files.h"
#include "tests/support/wait_until.h"

namespace {

// How a shell starts the wizard, and the keys that end it.
struct Named {
    std::string name;
    std::string text;
};

class OtherStreams : public testing::TestWithParam<std::tuple<Named, Named>> {};

INSTANTIATE_TEST_SUITE_P(
    To, OtherStreams,
    testing::Combine(testing::Values(Named{"pipe", " | cat"},
                                     Named{"silent_pipe", " 2>/dev/null | cat"},
                                     Named{"pipe_of_both", " 2>&1 | cat"},
                                     Named{"file", " >/run/scratch/screen"},
                                     Named{"silent_file", " >/run/scratch/screen 2>/dev/null"},
                                     Named{"no_error", " 2>/dev/null"}),
                     testing::Values(Named{"exit", "\t\t\t\n"}, Named{"interrupt", "\x03"},
                                     Named{"crash", "\x1c"})),
    [](const auto& way) {
        return std::get<0>(way.param).name + "_until_" + std::get<1>(way.param).name;
    });

// The shell would end before the wizard, and take the terminal with it, without its traps.
TEST_P(OtherStreams, leave_no_password_on_the_terminal_and_its_modes_as_they_were) {
    const auto& [redirection, end] = GetParam();
    WizardRun terminal({{"sh", "-c", "trap : INT QUIT; " WIZARD_PROGRAM + redirection.text}});
    wait_until([&] { return !terminal.modes().echo() && !terminal.modes().canonical(); },
               "the terminal did not echo");
    terminal.type("secret" + end.text);
    const ExitStatus status = terminal.waitExit();
    EXPECT_TRUE(end.name != "exit" || status == exited(0)) << status;
    EXPECT_EQ(terminal.modes(), terminal.modesBefore());
    EXPECT_EQ(terminal.output().find("secret"), std::string::npos);
}

TEST(PipedKeys, are_read_and_leave_the_terminal_as_it_was) {
    WizardRun wizard({{"sh", "-c", "printf '\\t\\t\\t\\n' | " WIZARD_PROGRAM}});
    EXPECT_EQ(wizard.waitExit(), exited(0));
    EXPECT_EQ(wizard.modes(), wizard.modesBefore());
}

TEST(PipedScreen, that_nobody_reads_any_more_ends_the_wizard) {
    WizardRun terminal({{"sh", "-c", "{ " WIZARD_PROGRAM "; echo $? >status; } | head -c 1"}});
    const auto has_ended = [&] {
        terminal.type("a");
        return exists("status") && !read_file("status").empty();
    };
    wait_until(has_ended, "the wizard had ended");
    EXPECT_EQ(read_file("status"), "1\n");
    EXPECT_EQ(terminal.modes(), terminal.modesBefore());
}

}  // namespace
