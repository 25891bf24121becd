// SIGKILL before, and in the middle of, every call by which the wizard, cp and rm change files.

#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "tests/reliability/files/file_test.h"
#include "tests/support/case_name.h"
#include "tests/support/process.h"
#include "tests/support/wait_until.h"

namespace {

// Whom the signal kills, and which share of the calls one test takes on: the processors of the host
// share the work.
struct Killing {
    const char* name;
    std::string whom;
    size_t share = 0;
};

constexpr size_t shares = 4;

// By comm in proc(5), which an ended process has too until somebody has taken note of its end.
bool command_runs() {
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        std::string name;
        std::ifstream(entry.path() / "comm") >> name;
        if ((name == "cp" || name == "rm") &&
            process_running(std::atoi(entry.path().filename().c_str())))
            return true;
    }
    return false;
}

class Killed : public FileTest, public testing::WithParamInterface<Killing> {
  protected:
    Killed() {
        const auto changes = [](const std::string& call) { return call[0] == '+'; };
        std::copy_if(calls.begin(), calls.end(), std::back_inserter(changingCalls), changes);
    }

    // Whether this test kills at a call: who dies there would be the same, or nobody, elsewhere.
    bool takesOn(size_t number) const {
        const std::string& call = changingCalls[number - 1];
        if (GetParam().whom == "all") return number % shares == GetParam().share;
        if (GetParam().whom == "halfway")
            return call.find(" write ") != std::string::npos &&
                   call.find("temp.cfg") == std::string::npos;
        return call.compare(0, 15, "+ teluma-wizard") != 0;
    }

    // Presses Enter, or answers, where the run lives to show what is waited for.
    static void seeThrough(WatchedRun& run) {
        const auto comes_to = [&run](const char* text) {
            return run.comesTo([=](const ScreenImage& image) { return image.shows(text); });
        };
        if (comes_to(title_of(Stop::password))) run.answerAll();
        // The button, at the latest, that a run ends with which nobody kills before.
        if (comes_to(" OK ")) run.press(Key::enter);
    }

    void killAt(size_t number) {
        SCOPED_TRACE(changingCalls[number - 1]);
        reset();
        WatchedRun run("kill " + std::to_string(number) + " " + GetParam().whom);
        seeThrough(run);
        const ExitStatus status = run.waitExit();
        EXPECT_TRUE(GetParam().whom == "child" || status == killed_by(SIGKILL)) << status;
        wait_until([] { return !command_runs(); }, "the commands of the killed wizard had ended");
        expectNothingLost();
        expectPrivate(WatchedRun::privateDirectory());
    }

    // Whatever the killed wizard has left there, nobody else can look at it.
    static void expectPrivate(const std::string& directory) {
        if (directory.empty() || !exists(directory)) return;
        EXPECT_EQ(file_facts(directory).mode, 0700u);
        EXPECT_EQ(file_facts(directory).owner, getuid());
        const std::string copy = directory + "/temp.cfg";
        EXPECT_TRUE(!exists(copy) || file_facts(copy).mode == 0600u);
    }

    void runAgain() {
        restoreBroken();
        WatchedRun run;
        run.answerAll("second.example");
        ASSERT_EQ(run.finish(), exited(0));
        expectNothingLost();
        expectOriginalsKept();
    }

    std::vector<std::string> changingCalls;
};

TEST_P(Killed, leaves_the_old_file_or_the_new_one_or_the_old_one_beside_it_and_runs_again) {
    ASSERT_GE(changingCalls.size(), 30u);
    int kills = 0;
    for (size_t number = 1; number <= changingCalls.size(); ++number) {
        if (!takesOn(number)) continue;
        ++kills;
        killAt(number);
        runAgain();
    }
    EXPECT_GT(kills, 0);
}

const Killing killings[] = {
    {"everybody_at_the_first_share_of_the_calls", "all", 0},
    {"everybody_at_the_second_share_of_the_calls", "all", 1},
    {"everybody_at_the_third_share_of_the_calls", "all", 2},
    {"everybody_at_the_fourth_share_of_the_calls", "all", 3},
    {"everybody_half_way_through_a_write", "halfway"},
    {"the_wizard_alone_while_a_command_runs", "wizard"},
    {"the_command_alone", "child"},
};

INSTANTIATE_TEST_SUITE_P(Files, Killed, testing::ValuesIn(killings), CaseName());

}  // namespace
