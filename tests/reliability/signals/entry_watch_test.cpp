// No handler can run in the middle of a call of curses or of the allocator: in a whole run, with
// signals of all kinds, every such call finds the signals held back that have handlers.

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <set>
#include <sstream>
#include <vector>

#include "tests/e2e/endings.h"
#include "tests/e2e/places.h"
#include "tests/reliability/signals/wizard_signals.h"
#include "tests/support/files.h"
#include "tests/support/process.h"

namespace {

constexpr const char* report_file = "/run/scratch/entries";

class WatchedWizard : public WizardRun {
  public:
    explicit WatchedWizard(const std::string& crash = "")
        : WizardRun({{"env", std::string("LD_PRELOAD=") + ENTRY_WATCH,
                      std::string("TELUMA_ENTRY_WATCH=") + report_file,
                      "TELUMA_ENTRY_CRASH=" + crash, WIZARD_PROGRAM}}) {}
};

// The last line of the report is how many calls the watch has looked at.
void expect_nothing_found() {
    // Far fewer than there are, far more than if the watch were not asked.
    constexpr long plenty = 1000;
    const std::string report = read_file(report_file);
    const size_t last_line = report.rfind('\n', report.size() - 2) + 1;
    EXPECT_EQ(report.substr(0, last_line), "");
    EXPECT_GT(std::atol(report.c_str() + last_line), plenty);
}

void disturb(WizardRun& wizard) {
    for (int i = 0; i < 10; ++i) wizard.resize(20 + i * 5, 72 + i * 13);
    wizard.resize(24, 80);
    wizard.waitForKey();
    stop(wizard);
    wizard.signal(SIGCONT);
    wizard.waitForKey();
}

TEST(EntryWatch, finds_no_signal_that_can_come_in_during_a_whole_run) {
    WatchedWizard wizard;
    for (int place = 0; place <= place_of(Stop::sendmail); ++place) {
        wizard.waitForScreen(stop_at(place));
        disturb(wizard);
        wizard.answer(stop_at(place), Answers());
    }
    for (const char* step : {"setting admin password", "connecting to CLI", "adding aliases"}) {
        wizard.waitForText(step);
        wizard.signal(SIGWINCH);
    }
    ASSERT_EQ(wizard.finish(), exited(0));
    expect_nothing_found();
}

using WatchedDialog = WizardAt<WatchedWizard>;

INSTANTIATE_TEST_SUITE_P(At, WatchedDialog, testing::ValuesIn(places_up_to(Place::pending)),
                         place_name);

TEST_P(WatchedDialog, is_interrupted_where_no_signal_can_hurt) {
    for (int round = 0; round < 3; ++round) disturb(wizard);
    wizard.press(Key::ctrl_c);
    EXPECT_TRUE(is_aborted(wizard));
    expect_nothing_found();
}

// Curses has set modes of its own then, and nothing has been drawn.
TEST(CrashAtStart, leaves_the_terminal_as_it_was) {
    WatchedWizard wizard("def_prog_mode");
    EXPECT_EQ(wizard.waitExit(), killed_by(SIGQUIT));
    EXPECT_TRUE(leaves_terminal_usable(wizard));
}

// The names in a file's table of symbols, each with its version if it has one.
std::vector<std::string> symbols(const char* which, const char* file) {
    std::istringstream lines(run_command({"nm", "-D", which, file}).out);
    std::vector<std::string> names;
    for (std::string line; std::getline(lines, line);)
        names.push_back(line.substr(line.rfind(' ') + 1));
    return names;
}

TEST(EntryWatch, knows_every_call_of_curses_that_changes_something) {
    std::set<std::string> known = {"isendwin", "is_nodelay", "key_defined", "tgoto",
                                   "tparm",    "tputs",      "wattr_get"};
    for (const std::string& name : symbols("--defined-only", ENTRY_WATCH)) known.insert(name);
    std::set<std::string> unknown;
    for (const std::string& symbol : symbols("--undefined-only", WIZARD_PROGRAM)) {
        const std::string name = symbol.substr(0, symbol.find('@'));
        if (symbol.find("@NCURSES") != std::string::npos && known.count(name) == 0)
            unknown.insert(name);
    }
    EXPECT_EQ(unknown, std::set<std::string>());
}

}  // namespace
