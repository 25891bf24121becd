// What can happen to the wizard wherever it is: signals that end it, a terminal that goes away, a
// stop. What they leave of the terminal, the private directory and the server.

#include <gtest/gtest.h>

#include <csignal>

#include "tests/e2e/endings.h"
#include "tests/e2e/places.h"
#include "tests/reliability/signals/wizard_signals.h"
#include "tests/support/expect_screen.h"
#include "tests/support/files.h"

namespace {

using DeathAt = WizardAt<DyingWizard>;

INSTANTIATE_TEST_SUITE_P(Every, DeathAt, testing::ValuesIn(places_up_to(Place::before_connecting)),
                         place_name);

TEST_P(DeathAt, leaves_a_usable_terminal) { wizard.dieOf(SIGSEGV); }

// Requests to end, which are what an interrupt is; the signals of a crash; and the others that end
// a program which does nothing about them.
class DeathOf : public testing::TestWithParam<int> {};

INSTANTIATE_TEST_SUITE_P(Signal, DeathOf,
                         testing::Values(SIGTERM, SIGHUP, SIGQUIT, SIGBUS, SIGILL, SIGFPE, SIGABRT,
                                         SIGSYS, SIGTRAP, SIGXCPU, SIGUSR1, SIGUSR2, SIGVTALRM,
                                         SIGPROF, SIGALRM),
                         testing::PrintToStringParamName());

TEST_P(DeathOf, leaves_a_usable_terminal) {
    DyingWizard wizard;
    wizard.waitForScreen(Stop::password);
    wizard.dieOf(GetParam());
}

TEST(QuitKey, ends_the_wizard_like_a_crash_and_leaves_a_usable_terminal) {
    DyingWizard wizard;
    wizard.waitForScreen(Stop::password);
    wizard.type("\x1c");
    EXPECT_EQ(wizard.waitExit(), killed_by(SIGQUIT));
    EXPECT_TRUE(leaves_terminal_usable(wizard));
}

// The wizard that unshare(1) has started and waits for.
pid_t child_of(pid_t process) {
    const std::string threads = "/proc/" + std::to_string(process) + "/task/";
    return std::stoi(read_file(threads + std::to_string(process) + "/children"));
}

// As the first process of a container, which the kernel lets no signal end that takes its default
// course.
TEST(FirstProcess, ends_of_what_would_crash_another_and_leaves_the_terminal_usable) {
    for (const int signal : {SIGQUIT, SIGUSR1}) {
        WizardRun wizard({{"unshare", "--pid", "--fork", "--kill-child", WIZARD_PROGRAM}});
        wizard.waitForText(title_of(Stop::password));
        kill(child_of(wizard.pid()), signal);
        EXPECT_TRUE(ends_with(wizard, exited(128 + signal), "")) << signal;
    }
}

using HangUpAt = WizardAt<DyingWizard>;

INSTANTIATE_TEST_SUITE_P(Some, HangUpAt,
                         testing::Values(Place::screen, Place::message, Place::silent_server,
                                         Place::final_ok),
                         place_name);

TEST_P(HangUpAt, ends_the_wizard_and_a_known_server) {
    wizard.dieOfHangUp();
    stage.expectServerTold();
}

// No SIGHUP comes with it.
TEST(EndOfInput, on_the_keyboard_ends_the_wizard) {
    WizardRun wizard({{"sh", "-c", "exec " WIZARD_PROGRAM " </dev/null"}});
    EXPECT_TRUE(is_aborted(wizard));
}

using StopAt = WizardAt<WizardRun>;

INSTANTIATE_TEST_SUITE_P(Lasting, StopAt, testing::ValuesIn(places_up_to(Place::final_ok)),
                         place_name);

// The terminal is the user's in between, and the same screen is there afterwards.
TEST_P(StopAt, gives_the_terminal_away_and_takes_it_back) {
    const TerminalModes modes = wizard.modes();
    const ScreenImage before = wizard.image();
    stop(wizard);
    EXPECT_TRUE(leaves_terminal_usable(wizard));
    wizard.signal(SIGCONT);
    wizard.waitForKey();
    EXPECT_SAME_LOOK(before, wizard.image());
    EXPECT_EQ(wizard.modes(), modes);
}

class StoppedWizard : public testing::Test {
  protected:
    StoppedWizard() {
        wizard.waitForScreen(Stop::password);
        wizard.type("\x1a");
        wait_until_stopped(wizard);
    }

    WizardRun wizard;
};

TEST_F(StoppedWizard, reads_the_next_key_when_it_goes_on) {
    wizard.signal(SIGCONT);
    wizard.waitForKey();
    wizard.type("a");
    wizard.waitForText("*");
}

TEST_F(StoppedWizard, draws_its_screen_at_the_size_that_the_terminal_got_meanwhile) {
    wizard.resize(50, 132);
    wizard.signal(SIGCONT);
    wizard.waitForKey();
    WizardRun calm(50, 132);
    calm.waitForScreen(Stop::password);
    EXPECT_SAME_LOOK(calm.image(), wizard.image());
}

TEST_F(StoppedWizard, that_finds_too_small_a_terminal_ends) {
    wizard.resize(19, 71);
    wizard.signal(SIGCONT);
    EXPECT_TRUE(is_refused_as_too_small(wizard));
}

}  // namespace
