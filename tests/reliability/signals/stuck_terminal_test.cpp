// A terminal that takes nothing, be it that Ctrl-S has stopped it or that the line is dead: the
// wizard waits for it, but ends when it is told to.

#include <sys/syscall.h>

#include <csignal>
#include <string>

#include "tests/e2e/endings.h"
#include "tests/e2e/places.h"
#include "tests/reliability/signals/wizard_signals.h"
#include "tests/support/files.h"
#include "tests/support/process.h"
#include "tests/support/wait_until.h"

namespace {

constexpr const char* stop_of_output = "\x13";
constexpr const char* start_of_output = "\x11";

/// A way in which a terminal comes to take nothing.
struct Obstacle {
    std::string name;
    void (*raise)(WizardRun&);
};

// Without a look at the screen, which would make the terminal take something.
bool writes_in_vain(pid_t wizard) {
    const std::string in_write = std::to_string(SYS_write) + " 0x1 ";
    return read_file("/proc/" + std::to_string(wizard) + "/syscall")
               .compare(0, in_write.size(), in_write) == 0;
}

void expect_end(DyingWizard& wizard, int signal) {
    wizard.signal(signal);
    wait_until([&] { return !process_running(wizard.pid()); }, "the wizard had ended");
    EXPECT_EQ(wizard.modes(), wizard.modesBefore());
    EXPECT_EQ(wizard.waitExit(), is_crash(signal) ? killed_by(signal) : exited(1));
}

class StuckTerminal : public testing::TestWithParam<std::tuple<Obstacle, int>> {
  protected:
    /// Has the wizard draw until the terminal takes nothing.
    void getStuck() {
        const auto is_stuck = [this] {
            std::get<Obstacle>(GetParam()).raise(wizard);
            wizard.signal(SIGWINCH);
            return writes_in_vain(wizard.pid());
        };
        wait_until(is_stuck, "the wizard was stuck");
    }

    DyingWizard wizard;
};

INSTANTIATE_TEST_SUITE_P(
    By, StuckTerminal,
    testing::Combine(
        testing::Values(Obstacle{"ctrl_s", [](WizardRun& wizard) { wizard.type(stop_of_output); }},
                        Obstacle{"full_line", [](WizardRun& wizard) { wizard.fillLine(); }}),
        testing::Values(SIGTERM, SIGQUIT)),
    [](const auto& way) {
        return std::get<0>(way.param).name + "_" + std::to_string(std::get<1>(way.param));
    });

TEST_P(StuckTerminal, lets_a_wizard_end_that_draws) {
    Stage stage(Place::silent_server);
    stage.open(wizard);
    getStuck();
    const int signal = std::get<int>(GetParam());
    expect_end(wizard, signal);
    if (!is_crash(signal)) stage.expectServerTold();
}

TEST_P(StuckTerminal, lets_a_wizard_end_that_has_nothing_to_say) {
    wizard.waitForScreen(Stop::password);
    std::get<Obstacle>(GetParam()).raise(wizard);
    expect_end(wizard, std::get<int>(GetParam()));
}

class StoppedOutput : public testing::Test {
  protected:
    StoppedOutput() {
        wizard.waitForScreen(Stop::password);
        wizard.type(std::string(stop_of_output) + "a");
        wait_until([this] { return writes_in_vain(wizard.pid()); }, "the wizard was stuck");
    }

    DyingWizard wizard;
};

TEST_F(StoppedOutput, goes_on_as_if_nothing_had_been) {
    wizard.type(std::string("b") + start_of_output);
    wizard.waitForText("**");
    wizard.type("c");
    wizard.waitForText("***");
    wizard.press(Key::ctrl_c);
    EXPECT_TRUE(is_aborted(wizard));
}

TEST_F(StoppedOutput, of_a_key_lets_the_wizard_end) { expect_end(wizard, SIGINT); }

// The key starts the output again.
TEST_F(StoppedOutput, ends_with_the_interrupt_key_as_ever) {
    wizard.press(Key::ctrl_c);
    EXPECT_TRUE(is_aborted(wizard));
}

}  // namespace
