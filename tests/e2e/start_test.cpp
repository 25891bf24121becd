// Who may not start the wizard, and where: it says why and ends before the first screen.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <regex>
#include <string>
#include <vector>

#include "tests/support/files.h"
#include "tests/support/golden.h"
#include "tests/support/process.h"
#include "tests/support/screen_table.h"
#include "tests/support/terminal_program.h"

namespace {

using Words = std::vector<std::string>;

const std::string too_small =
    "Please enlarge your window so it will have at least 72 columns and 20 lines!\n";

/// Starts the wizard by other commands than a test of its screens would.
class Start : public testing::Test {
  protected:
    /// A command that the wizard's own is appended to.
    static Words as(const std::string& user, const std::string& group) {
        return {"setpriv", "--reuid", user, "--regid", group, "--clear-groups", "--"};
    }

    /// Where every user may run the wizard: the build may stand where only root may go.
    static ProgramSetup setup(Words launcher, int rows = 24, int cols = 80) {
        const std::string copy = "/run/scratch/teluma-wizard";
        std::filesystem::copy_file(WIZARD_PROGRAM, copy,
                                   std::filesystem::copy_options::overwrite_existing);
        chmod(copy.c_str(), 0755);
        chmod("/run/scratch", 0755);
        launcher.push_back(copy);
        return {std::move(launcher), rows, cols};
    }

    /// Expects this end, with nothing printed but this and the terminal as it was.
    static void expectEnd(TerminalProgram& wizard, int status, const std::string& printed) {
        EXPECT_EQ(wizard.waitExit(), exited(status));
        EXPECT_EQ(wizard.printedAfterwards(), printed);
        EXPECT_EQ(wizard.modes(), wizard.modesBefore());
        EXPECT_TRUE(wizard.image().cursor().visible);
        EXPECT_FALSE(wizard.alternateScreen());
    }
};

TEST_F(Start, on_less_than_72_columns_and_20_lines_is_refused_with_status_0) {
    for (const auto& [rows, cols] : {std::pair(20, 71), std::pair(19, 72)}) {
        TerminalProgram wizard(setup({}, rows, cols));
        expectEnd(wizard, 0, too_small);
    }
    TerminalProgram wizard(setup({}, 20, 72));
    wizard.waitForText(title_of(Stop::password));
}

TEST_F(Start, without_a_terminal_has_status_1_and_leaves_that_alone) {
    for (const char* term : {"no-such-terminal", "dumb", "unknown"}) {
        ProgramSetup setup{{WIZARD_PROGRAM}};
        setup.term = term;
        // Curses does not give back what it had begun with.
        setup.environment = {{"LSAN_OPTIONS", "detect_leaks=0"}};
        TerminalProgram wizard(setup);
        expectEnd(wizard, 1,
                  std::string("Error opening terminal: ") + term +
                      ".\nTry TERM=xterm-256color.\nYou must install ncurses library\n");
    }
}

TEST_F(Start, sends_standard_error_nowhere_and_forbids_core_dumps) {
    // The sanitizers have a limit of their own.
    TerminalProgram wizard(setup({"sh", "-c",
                                  "ASAN_OPTIONS=$ASAN_OPTIONS:disable_coredump=0 exec prlimit "
                                  "--core=4096:8192 \"$0\""}));
    wizard.waitForText(title_of(Stop::password));
    const std::string process = "/proc/" + std::to_string(wizard.pid());
    EXPECT_EQ(link_target(process + "/fd/2"), "/dev/null");
    const std::regex limits("Max core file size +0 +8192 ");
    EXPECT_TRUE(std::regex_search(read_file(process + "/limits"), limits));
}

/// A user who is no superuser, be it by the user's number or by the group's alone.
class StartByOthers : public Start {
  protected:
    void SetUp() override {
        Words command = as("12345", "12345");
        command.emplace_back("true");
        if (run_command(command).status != exited(0))
            GTEST_SKIP() << "there is only one user in the sandbox of an ordinary user";
    }
};

TEST_F(StartByOthers, is_refused_with_status_1) {
    for (const auto& [user, group] :
         {std::pair("12345", "12345"), std::pair("12345", "0"), std::pair("0", "12345")}) {
        TerminalProgram wizard(setup(as(user, group)));
        EXPECT_SCREEN(wizard, "golden/not_superuser");
        wizard.press(Key::space);
        expectEnd(wizard, 1, "");
    }
}

// The files of a process that nobody may dump are the superuser's.
TEST_F(StartByOthers, forbids_core_dumps_to_programs_too) {
    TerminalProgram wizard(setup(as("12345", "12345")));
    wizard.waitForText("Error!");
    EXPECT_EQ(file_facts("/proc/" + std::to_string(wizard.pid()) + "/limits").owner, 0u);
}

TEST_F(StartByOthers, leaves_nothing_typed_ahead_to_the_next_program) {
    TerminalProgram wizard(setup(as("12345", "12345")));
    wizard.waitForText("You MUST be a superuser");
    wizard.type("\nid\n");
    expectEnd(wizard, 1, "");
    EXPECT_FALSE(wizard.hasUnreadInput());
}

TEST_F(StartByOthers, ends_as_ever_for_its_size_or_by_ctrl_c) {
    TerminalProgram small(setup(as("12345", "12345"), 19, 72));
    expectEnd(small, 0, too_small);
    TerminalProgram wizard(setup(as("12345", "12345")));
    wizard.waitForText("Error!");
    wizard.press(Key::ctrl_c);
    expectEnd(wizard, 1, "\nTELUMA Configuration Wizard Aborted!\n");
}

}  // namespace
