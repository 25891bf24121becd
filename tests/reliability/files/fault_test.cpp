// Every call by which the wizard, cp and rm touch files and processes fails once: what the user is
// told, where that leads, and the files.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "tests/e2e/frame.h"
#include "tests/reliability/files/fault_cases.h"
#include "tests/reliability/files/watched_run.h"
#include "tests/support/case_name.h"

namespace {

constexpr const char* login_message =
    "Error! Could not login to Teluma server! Please make sure that the CLI port is not in use! OK";
constexpr const char* relay_message = "Error! Could not configure relay! OK";
constexpr const char* sendmail_message = "Error! Could not configure sendmail wrapper! OK";

// One of the calls of a fault group.
struct Fault {
    std::string call;
    int count = 1;

    explicit Fault(const std::string& text) : call(text.substr(0, text.find('#'))) {
        if (call.size() < text.size()) count = std::stoi(text.substr(call.size() + 1));
        if (call.find("cp ") != 0 && call.find("rm ") != 0) call.insert(0, "teluma-wizard ");
    }
};

class Faults : public FileTest, public testing::WithParamInterface<FaultGroup> {
  protected:
    void cause(const Fault& fault, Outcome outcome) {
        SCOPED_TRACE(fault.call + " " + std::to_string(fault.count));
        const auto is_it = [&](const std::string& call) { return call.substr(2) == fault.call; };
        const auto times = static_cast<int>(std::count_if(calls.begin(), calls.end(), is_it));
        const int count = fault.count > 0 ? fault.count : times + 1 + fault.count;
        ASSERT_LE(count, times);
        ASSERT_GE(count, 1);
        files.reset();
        WatchedRun run(failing(fault.call, count));
        run.answerAll();
        seeThrough(run, outcome);
        const std::string directory = WatchedRun::privateDirectory();
        EXPECT_EQ(!directory.empty() && exists(directory), outcome == Outcome::completes_untidy);
        files.expectNothingLost();
    }

    // The message, where there is one, the way back from it and the end.
    void seeThrough(WatchedRun& run, Outcome outcome) {
        if (outcome == Outcome::no_login || outcome == Outcome::waits)
            return seeEnd(run, outcome == Outcome::waits);
        if (outcome == Outcome::no_relay) goBack(run, relay_message, Stop::relay);
        if (outcome == Outcome::no_sendmail) goBack(run, sendmail_message, Stop::sendmail);
        EXPECT_EQ(run.finish(), exited(0));
    }

    void goBack(WatchedRun& run, const std::string& message, Stop stop) {
        expectMessage(run, message);
        files.expectNothingLost();
        run.press(Key::enter);
        run.answerAll("", stop);
    }

    // A second run completes; it is as good as a first one where nothing has been changed.
    void seeEnd(WatchedRun& run, bool waits) {
        if (waits)
            run.waitForText("--> setting admin password");
        else
            expectMessage(run, login_message);
        run.press(waits ? Key::ctrl_c : Key::enter);
        EXPECT_EQ(run.waitExit(), exited(1));
        files.expectNothingLost();
        if (files.areUntouched()) return;
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
};

TEST_P(Faults, are_told_lead_to_the_right_screen_and_lose_no_file) {
    for (const auto& [outcome, faults] : GetParam().calls) {
        for (const std::string& fault : faults) cause(Fault(fault), outcome);
    }
}

INSTANTIATE_TEST_SUITE_P(Of, Faults, testing::ValuesIn(fault_groups()), CaseName());

// The calls of one kind may be many; the first, and where it matters others, stand for them.
using CallsOfARun = FileTest;

TEST_F(CallsOfARun, are_all_among_the_faults) {
    std::set<std::string> kinds;
    for (const FaultGroup& group : fault_groups()) {
        for (const auto& [outcome, faults] : group.calls) {
            for (const std::string& fault : faults) kinds.insert(Fault(fault).call);
        }
    }
    for (const std::string& line : calls) {
        const std::string call = line.substr(2);  // without the sign
        const bool is_note = call.find("teluma-wizard has made the directory ") == 0;
        EXPECT_TRUE(is_note || kinds.count(call) == 1) << call;
    }
}

// As one does who tidies /tmp up while the questions are answered.
TEST(RemovedDirectory, is_made_anew_for_the_next_file_and_gone_at_the_end) {
    WizardRun wizard;
    wizard.walk(Stop::password, Stop::sendmail);
    const std::string directory = "/proc/" + std::to_string(wizard.pid()) + "/cwd";
    const std::string removed = link_target(directory);
    ASSERT_NE(removed.find("/teluma-wizard."), std::string::npos);
    std::filesystem::remove(removed);
    wizard.pressNext(Stop::sendmail);
    wizard.waitForText("creating domain");
    const std::string made = link_target(directory);
    EXPECT_EQ(file_facts(made).mode, 0700u);
    EXPECT_EQ(wizard.finish(), exited(0));
    EXPECT_FALSE(exists(made));
    EXPECT_NE(read_file(InstalledServer::config).find(" cli "), std::string::npos);
}

}  // namespace
