// Every call by which the wizard, cp and rm touch files and processes fails once: what the user is
// told, where that leads, and the files.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "tests/e2e/apply_test.h"
#include "tests/reliability/files/file_test.h"
#include "tests/support/case_name.h"

#define RUN "/var/opt/teluma/run"
#define PID_FILE RUN "/teluma.pid"
#define CONFIG RUN "/teluma.cfg"
#define FILTERS RUN "/smtp.filters"
#define OLD ".beforewizard"
#define COPY "temp.cfg"
#define DIRECTORY "private directory"
#define SERVER "/opt/teluma/bin/teluma"
#define WRAPPER "/opt/teluma/bin/sendmail"
#define SENDMAIL "/usr/sbin/sendmail"
#define QUIETLY " >> /dev/null"

namespace {

// Where a run comes to in which a call has failed.
enum class Outcome {
    completes,         // as if nothing had happened
    completes_untidy,  // the same, but the private directory stays behind
    waits,             // for the end of the server, which has not been told to end, until Ctrl-C
    no_login,          // "Could not login", and the end
    no_relay,          // the relay step fails and leads back to its screen
    no_sendmail,       // the sendmail step fails and leads back to its screen
};

// The calls of one part of a run, and what comes of it when each fails: the wizard's unless they
// begin with "cp" or "rm", then the call and what it is about as shim_orders.h has them. "#2" is
// the second of the calls of this kind, "#-1" the last; without it the first is meant.
struct FaultGroup {
    const char* name;
    std::map<Outcome, std::vector<std::string>> calls;
};

// Every kind of call of a run.
const FaultGroup fault_groups[] = {
    {"start_and_end",
     {{Outcome::completes, {"mkdtemp " DIRECTORY, "chdir " DIRECTORY, "unlink " COPY "#-1"}},
      {Outcome::completes_untidy, {"fchdir #-1", "rmdir " DIRECTORY}}}},
    // Setting the password, starting the server, looking up its address.
    {"the_server",
     {{Outcome::waits, {"openat " PID_FILE, "fdopen " PID_FILE, "read " PID_FILE}},
      {Outcome::completes, {"openat " PID_FILE "#-1", "read " PID_FILE "#-1", "close " PID_FILE}},
      {Outcome::no_login,
       {"fork ", "fchdir ", "execl " SERVER " -A \"Adm1n secret\"" QUIETLY, "fork #4", "fchdir #2",
        "execl " SERVER QUIETLY, "pipe #-3", "fork #5"}}}},
    // To open the file, before the copy, after it (and once more: is it still the same?).
    {"the_ways_to_the_files",
     {{Outcome::completes, {"lstat " RUN, "close " RUN, "lstat " RUN "/."}},
      {Outcome::waits, {"openat " RUN, "lstat " PID_FILE}},
      {Outcome::no_login, {"lstat " CONFIG, "lstat " CONFIG "#2", "lstat " CONFIG "#4"}},
      {Outcome::no_relay, {"lstat " FILTERS, "lstat " FILTERS "#2", "lstat " FILTERS "#3"}}}},
    {"the_configuration",
     {{Outcome::no_login,
       {"openat " CONFIG, "fdopen " CONFIG, "read " CONFIG, "open " COPY, "fdopen " COPY,
        "write " COPY, "close " COPY}},
      {Outcome::completes, {"close " CONFIG}}}},
    {"the_original_of_the_configuration",
     {{Outcome::no_login,
       {"lstat " CONFIG OLD, "openat " CONFIG OLD ".new", "read " CONFIG "#2", "read " CONFIG "#3",
        "write " CONFIG OLD ".new", "fchown " CONFIG OLD ".new", "fchmod " CONFIG OLD ".new",
        "fsync " CONFIG OLD ".new", "close " CONFIG OLD ".new", "linkat " CONFIG OLD}},
      {Outcome::completes, {"unlinkat " CONFIG OLD ".new"}}}},
    // What the commands say is not looked at.
    {"the_copy_over_the_configuration",
     {{Outcome::no_login,
       {"fork #2", "execl cp " COPY " " CONFIG QUIETLY, "cp open " COPY, "cp openat " CONFIG,
        "cp copy_file_range " CONFIG, "cp read " COPY, "cp write " CONFIG}},
      {Outcome::completes,
       {"cp open " CONFIG, "cp close " CONFIG, "cp close " COPY, "fork #3",
        "execl rm " COPY QUIETLY, "rm unlinkat " COPY, "unlink " COPY}}}},
    {"the_filters_script",
     {{Outcome::no_relay,
       {"openat " FILTERS, "fdopen " FILTERS, "read " FILTERS, "open " COPY "#2",
        "fdopen " COPY "#2", "write " COPY "#2", "close " COPY "#2", "fork #8", "fchown " FILTERS}},
      {Outcome::completes,
       {"close " FILTERS, "fork #6", "execl cp " COPY " " FILTERS QUIETLY, "cp open " FILTERS,
        "cp openat " FILTERS, "cp copy_file_range " FILTERS, "cp write " FILTERS,
        "cp close " FILTERS, "fork #7"}}}},
    {"the_original_of_the_filters_script",
     {{Outcome::no_relay,
       {"lstat " FILTERS OLD, "openat " FILTERS OLD ".new", "read " FILTERS "#2",
        "write " FILTERS OLD ".new", "fchown " FILTERS OLD ".new", "fchmod " FILTERS OLD ".new",
        "fsync " FILTERS OLD ".new", "close " FILTERS OLD ".new", "linkat " FILTERS OLD}},
      {Outcome::completes, {"unlinkat " FILTERS OLD ".new"}}}},
    {"sendmail",
     {{Outcome::no_sendmail,
       {"lstat " WRAPPER, "openat " WRAPPER, "fork #9", "fchown " WRAPPER, "fchmod " WRAPPER,
        "rename " SENDMAIL, "symlink " SENDMAIL}},
      {Outcome::completes,
       {"close " WRAPPER, "readlink " SENDMAIL, "lstat " SENDMAIL,
        "lstat " SENDMAIL ".beforeteluma", "lstat " SENDMAIL ".beforeteluma1"}}}},
};

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
        reset();
        WatchedRun run("fail " + std::to_string(count) + " " + fault.call);
        run.answerAll();
        seeThrough(run, outcome);
        const std::string directory = WatchedRun::privateDirectory();
        EXPECT_EQ(!directory.empty() && exists(directory), outcome == Outcome::completes_untidy);
        expectNothingLost();
    }

    // The message, where there is one, the way back from it and the end.
    void seeThrough(WatchedRun& run, Outcome outcome) {
        if (outcome == Outcome::no_login || outcome == Outcome::waits)
            return seeEnd(run, outcome == Outcome::waits);
        if (outcome == Outcome::no_relay) goBack(run, "Could not configure relay!", Stop::relay);
        if (outcome == Outcome::no_sendmail)
            goBack(run, "Could not configure sendmail wrapper!", Stop::sendmail);
        EXPECT_EQ(run.finish(), exited(0));
    }

    void goBack(WatchedRun& run, const std::string& message, Stop stop) {
        run.dismissError(message);
        expectNothingLost();
        run.answerAll("", stop);
    }

    // A second run completes; it is as good as a first one where nothing has been changed.
    void seeEnd(WatchedRun& run, bool waits) {
        if (waits) {
            run.waitForText("--> setting admin password");
            run.press(Key::ctrl_c);
        } else {
            run.dismissError(login_message);
        }
        EXPECT_EQ(run.waitExit(), exited(1));
        expectNothingLost();
        if (areUntouched()) return;
        restoreBroken();
        WatchedRun second;
        second.answerAll();
        EXPECT_EQ(second.finish(), exited(0));
        expectOriginalsKept();
    }
};

TEST_P(Faults, are_told_lead_to_the_right_screen_and_lose_no_file) {
    for (const auto& [outcome, faults] : GetParam().calls) {
        for (const std::string& fault : faults) cause(Fault(fault), outcome);
    }
}

INSTANTIATE_TEST_SUITE_P(Of, Faults, testing::ValuesIn(fault_groups), CaseName());

// The calls of one kind may be many; the first, and where it matters others, stand for them.
using CallsOfARun = FileTest;

TEST_F(CallsOfARun, are_all_among_the_faults) {
    std::set<std::string> kinds;
    for (const FaultGroup& group : fault_groups) {
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

// As one does who tidies up while the questions are answered.
TEST(RemovedDirectory, is_made_anew_for_the_next_file_and_gone_at_the_end) {
    WizardRun wizard;
    wizard.walk(Stop::password, Stop::sendmail);
    const std::string directory = "/proc/" + std::to_string(wizard.pid()) + "/cwd";
    const std::string removed = link_target(directory);
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
