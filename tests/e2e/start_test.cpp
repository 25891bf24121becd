// Who may not start the wizard, and where: it says why and ends before the first screen.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <regex>

#include "tests/e2e/endings.h"
#include "tests/support/files.h"
#include "tests/support/golden.h"

namespace {

TEST(Start, on_less_than_72_columns_and_20_lines_is_refused_with_status_0) {
    for (const auto& [rows, cols] : {std::pair(20, 71), std::pair(19, 72)}) {
        WizardRun wizard(rows, cols);
        EXPECT_TRUE(is_refused_as_too_small(wizard));
    }
    WizardRun wizard(20, 72);
    wizard.waitForText(title_of(Stop::password));
}

TEST(Start, without_a_terminal_has_status_1_and_leaves_that_alone) {
    for (const std::string term : {"no-such-terminal", "dumb", "unknown"}) {
        const std::string set = term == "unknown" ? "-uTERM" : "TERM=" + term;
        // Curses does not give back what it had begun with.
        WizardRun wizard({{"env", set, "LSAN_OPTIONS=detect_leaks=0", WIZARD_PROGRAM}});
        EXPECT_TRUE(ends_with(wizard, exited(1),
                              "Error opening terminal: " + term +
                                  ".\nTry TERM=xterm-256color.\n"
                                  "You must install ncurses library\n"));
    }
}

TEST(Start, sends_standard_error_nowhere_and_forbids_core_dumps) {
    // The sanitizers have a limit of their own.
    WizardRun wizard({{"sh", "-c",
                       "ASAN_OPTIONS=$ASAN_OPTIONS:disable_coredump=0 exec prlimit "
                       "--core=4096:8192 " WIZARD_PROGRAM}});
    wizard.waitForText(title_of(Stop::password));
    const std::string process = "/proc/" + std::to_string(wizard.pid());
    EXPECT_EQ(link_target(process + "/fd/2"), "/dev/null");
    const std::regex limits("Max core file size +0 +8192 ");
    EXPECT_TRUE(std::regex_search(read_file(process + "/limits"), limits));
}

/// A user who is no superuser, be it by the user's number or by the group's alone.
class StartByOthers : public testing::Test {
  protected:
    StartByOthers() {
        // The build may stand where only root may go.
        std::filesystem::copy_file(WIZARD_PROGRAM, "teluma-wizard");
        chmod("teluma-wizard", 0755);
        chmod(".", 0755);
    }

    void SetUp() override {
        if (chown("teluma-wizard", 12345, 12345) != 0)
            GTEST_SKIP() << "there is only one user in the sandbox of an ordinary user";
    }

    static ProgramSetup as(const std::string& user, const std::string& group, int rows = 24) {
        return {{"env", "-u", "LD_PRELOAD", "setpriv", "--reuid", user, "--regid", group,
                 "--clear-groups", "./teluma-wizard"},
                rows};
    }
};

TEST_F(StartByOthers, is_refused_with_status_1_and_leaves_nothing_typed_ahead) {
    for (const auto& [user, group] :
         {std::pair("12345", "12345"), std::pair("12345", "0"), std::pair("0", "12345")}) {
        WizardRun wizard(as(user, group));
        EXPECT_SCREEN(wizard, "golden/not_superuser");
        // The files of a process that nobody may dump are the superuser's.
        EXPECT_EQ(file_facts("/proc/" + std::to_string(wizard.pid()) + "/limits").owner, 0u);
        wizard.type(" \nid\n");
        EXPECT_TRUE(ends_with(wizard, exited(1), ""));
    }
}

TEST_F(StartByOthers, ends_as_ever_for_its_size_or_by_ctrl_c) {
    WizardRun small(as("12345", "12345", 19));
    EXPECT_TRUE(is_refused_as_too_small(small));
    WizardRun wizard(as("12345", "12345"));
    wizard.waitForText("Error!");
    wizard.press(Key::ctrl_c);
    EXPECT_TRUE(is_aborted(wizard));
}

}  // namespace
