// Every call by which the wizard, cp and rm touch files and processes fails once: what the user is
// told, where that leads, and the files.

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <set>
#include <string>
#include <vector>

#include "tests/e2e/frame.h"
#include "tests/reliability/files/changed_files.h"
#include "tests/reliability/files/fault_cases.h"
#include "tests/reliability/files/watched_run.h"

namespace {

constexpr const char* login_message =
    "Error! Could not login to Teluma server! Please make sure that the CLI port is not in use! OK";
constexpr const char* relay_message = "Error! Could not configure relay! OK";
constexpr const char* sendmail_message = "Error! Could not configure sendmail wrapper! OK";

// Without the sign in front.
std::string kind_of(const std::string& call) {
    return call.substr(2);
}

class Faults : public testing::TestWithParam<FaultGroup> {
  protected:
    // A run without a fault, to see what the wizard does and what it makes of the files.
    Faults() {
        files.reset();
        WatchedRun run;
        run.answerAll();
        EXPECT_EQ(run.finish(), exited(0));
        files.rememberAsNew();
        for (const std::string& call : WatchedRun::calls())
            calls.push_back(kind_of(call));
    }

    void cause(const FaultCase& fault) {
        SCOPED_TRACE(std::string(fault.call) + " " + std::to_string(fault.count));
        const int times = static_cast<int>(std::count(calls.begin(), calls.end(), fault.call));
        const int count = fault.count > 0 ? fault.count : times + 1 + fault.count;
        ASSERT_LE(count, times);
        ASSERT_GE(count, 1);
        files.reset();
        WatchedRun run(WatchedRun::failing(fault.call, count, fault.failure));
        run.answerAll();
        seeThrough(run, fault.outcome);
        const std::string directory = WatchedRun::privateDirectory();
        EXPECT_EQ(!directory.empty() && exists(directory),
                  fault.outcome == Outcome::completes_untidy);
        files.expectNothingLost();
    }

    // The message, where there is one, the way back from it and the end.
    void seeThrough(WatchedRun& run, Outcome outcome) {
        if (outcome == Outcome::no_login)
            return seeLoginFail(run);
        if (outcome == Outcome::waits)
            return interrupt(run);
        if (outcome == Outcome::no_relay)
            goBack(run, relay_message, Stop::relay);
        if (outcome == Outcome::no_sendmail)
            goBack(run, sendmail_message, Stop::sendmail);
        EXPECT_EQ(run.finish(), exited(0));
    }

    void goBack(WatchedRun& run, const std::string& message, Stop stop) {
        expectMessage(run, message);
        files.expectNothingLost();
        run.press(Key::enter);
        run.answerAll("", stop);
    }

    void seeLoginFail(WatchedRun& run) {
        expectMessage(run, login_message);
        run.press(Key::enter);
        EXPECT_EQ(run.waitExit(), exited(1));
        runAgain();
    }

    void interrupt(WatchedRun& run) {
        run.waitForText("--> setting admin password");
        run.press(Key::ctrl_c);
        EXPECT_EQ(run.waitExit(), exited(1));
        runAgain();
    }

    // A second run completes.
    void runAgain() {
        files.expectNothingLost();
        files.restoreBroken();
        WatchedRun second;
        second.answerAll();
        EXPECT_EQ(second.finish(), exited(0));
        files.expectOriginalsKept();
    }

    static void expectMessage(WatchedRun& run, const std::string& message) {
        run.waitForText("Error!");
        run.waitForKey();
        EXPECT_EQ(words_in_frame(run.image()), message);
    }

    ChangedFiles files;
    std::vector<std::string> calls;
};

TEST_P(Faults, are_told_lead_to_the_right_screen_and_lose_no_file) {
    for (const FaultCase& fault : GetParam().cases)
        cause(fault);
    std::cout << GetParam().cases.size() << " faults\n";
}

INSTANTIATE_TEST_SUITE_P(Of, Faults, testing::ValuesIn(fault_groups()), CaseName());

// The calls of one kind may be many; the first, and where it matters others, stand for them.
TEST(CallsOfARun, are_all_among_the_faults) {
    ChangedFiles files;
    files.reset();
    WatchedRun run;
    run.answerAll();
    EXPECT_EQ(run.finish(), exited(0));
    std::set<std::string> kinds = {"teluma-wizard has made the directory " +
                                   WatchedRun::privateDirectory()};
    for (const FaultGroup& group : fault_groups()) {
        for (const FaultCase& fault : group.cases)
            kinds.insert(fault.call);
    }
    for (const std::string& call : WatchedRun::calls())
        EXPECT_EQ(kinds.count(kind_of(call)), 1u) << call;
}

}  // namespace
