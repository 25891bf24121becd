// SIGKILL before, and in the middle of, every call by which the wizard, cp and rm change files.

#include <gtest/gtest.h>
#include <unistd.h>

#include <iostream>
#include <string>
#include <vector>

#include "tests/reliability/files/changed_files.h"
#include "tests/reliability/files/watched_run.h"

namespace {

// Whom the signal kills, and which share of the calls one test takes on: the processors of the host
// share the work.
struct Killing {
    const char* name;
    const char* whom;
    int share;
};

constexpr int shares = 4;

bool is_changing(const std::string& call) {
    return call.compare(0, 1, "+") == 0;
}

class Killed : public testing::TestWithParam<Killing> {
  protected:
    // Runs through without orders, to see what is to be done.
    void runThrough() {
        files.reset();
        WatchedRun run;
        run.answerAll();
        ASSERT_EQ(run.finish(), exited(0));
        files.rememberAsNew();
        for (const std::string& call : WatchedRun::calls()) {
            if (is_changing(call))
                changing_calls.push_back(call);
        }
    }

    // Whether this test kills at a call: who dies there would be the same, or nobody, elsewhere.
    bool takesOn(size_t number) const {
        const std::string& call = changing_calls[number - 1];
        const bool of_child = call.compare(0, 15, "+ teluma-wizard") != 0;
        const bool writes =
            call.find(" write ") != std::string::npos && call.find("temp.cfg") == std::string::npos;
        const std::string whom = GetParam().whom;
        if (whom == "halfway")
            return writes;
        return whom == "all" ? number % shares == static_cast<size_t>(GetParam().share) : of_child;
    }

    // Whether it lives to show this.
    static bool comesTo(WatchedRun& run, const char* text) {
        return run.comesTo([&](const ScreenImage& image) { return image.shows(text); });
    }

    void killAt(size_t number) {
        SCOPED_TRACE(changing_calls[number - 1]);
        files.reset();
        WatchedRun run(WatchedRun::killing(static_cast<int>(number), GetParam().whom));
        if (comesTo(run, title_of(Stop::password)))
            run.answerAll();
        // The button, at the latest, that a run ends with which nobody kills before.
        if (comesTo(run, " OK "))
            run.press(Key::enter);
        const ExitStatus status = run.waitExit();
        EXPECT_TRUE(GetParam().whom == std::string("child") || status == killed_by(SIGKILL))
            << status;
        WatchedRun::waitForCommands();
        files.expectNothingLost();
        expectPrivate(WatchedRun::privateDirectory());
    }

    // Whatever the killed wizard has left there, nobody else can look at it.
    static void expectPrivate(const std::string& directory) {
        if (directory.empty() || !exists(directory))
            return;
        EXPECT_EQ(file_facts(directory).mode, 0700u);
        EXPECT_EQ(file_facts(directory).owner, getuid());
        const std::string copy = directory + "/temp.cfg";
        EXPECT_TRUE(!exists(copy) || file_facts(copy).mode == 0600u);
    }

    void runAgain() {
        restored += files.restoreBroken();
        WatchedRun run;
        run.answerAll("second.example");
        ASSERT_EQ(run.finish(), exited(0));
        files.expectNothingLost();
        files.expectOriginalsKept();
    }

    ChangedFiles files;
    std::vector<std::string> changing_calls;
    int restored = 0;
};

TEST_P(Killed, leaves_the_old_file_or_the_new_one_or_the_old_one_beside_it_and_runs_again) {
    runThrough();
    ASSERT_GE(changing_calls.size(), 30u);
    int kills = 0;
    for (size_t number = 1; number <= changing_calls.size(); ++number) {
        if (!takesOn(number))
            continue;
        ++kills;
        killAt(number);
        runAgain();
    }
    EXPECT_GT(kills, 0);
    std::cout << kills << " kills, " << restored << " files put back by hand\n";
}

const Killing killings[] = {
    {"everybody_at_the_first_share_of_the_calls", "all", 0},
    {"everybody_at_the_second_share_of_the_calls", "all", 1},
    {"everybody_at_the_third_share_of_the_calls", "all", 2},
    {"everybody_at_the_fourth_share_of_the_calls", "all", 3},
    {"everybody_half_way_through_a_write", "halfway", 0},
    {"the_wizard_alone_while_a_command_runs", "wizard", 0},
    {"the_command_alone", "child", 0},
};

INSTANTIATE_TEST_SUITE_P(Files, Killed, testing::ValuesIn(killings), CaseName());

}  // namespace
