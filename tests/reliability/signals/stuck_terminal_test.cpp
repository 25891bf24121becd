// A terminal that takes nothing, be it that Ctrl-S has stopped it or that the line is dead: the
// wizard waits for it, but ends when it is told to.

#include <sys/syscall.h>

#include <string>

#include "tests/e2e/apply_waits.h"
#include "tests/e2e/endings.h"
#include "tests/reliability/signals/wizard_signals.h"
#include "tests/support/files.h"
#include "tests/support/process.h"
#include "tests/support/wait_until.h"

namespace {

constexpr const char* stop_of_output = "\x13";
constexpr const char* start_of_output = "\x11";

/// A way in which a terminal comes to take nothing.
struct Obstacle {
    const char* name;
    void (*raise)(WizardRun&);
};

auto every_obstacle() {
    return testing::Values(
        Obstacle{"ctrl_s", [](WizardRun& wizard) { wizard.type(stop_of_output); }},
        Obstacle{"full_line", [](WizardRun& wizard) { wizard.fillLine(); }});
}

// Without a look at the screen, which would make the terminal take something.
bool writes_in_vain(pid_t wizard) {
    const std::string in_write = std::to_string(SYS_write) + " 0x1 ";
    return read_file("/proc/" + std::to_string(wizard) + "/syscall")
               .compare(0, in_write.size(), in_write) == 0;
}

void expect_end(DyingWizard& wizard, const Death& death) {
    wizard.rememberDirectory();
    wizard.signal(death.signal);
    wait_until([&] { return !process_running(wizard.pid()); }, "the wizard had ended");
    EXPECT_EQ(wizard.modes(), wizard.modesBefore());
    EXPECT_EQ(wizard.waitExit(), death.is_crash ? killed_by(death.signal) : exited(1));
}

using ObstacleAndDeath = std::tuple<Obstacle, Death>;

class StuckTerminal : public testing::TestWithParam<ObstacleAndDeath> {
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

std::string stuck_name(const testing::TestParamInfo<ObstacleAndDeath>& info) {
    return std::string(std::get<Obstacle>(info.param).name) + "_" +
           std::get<Death>(info.param).name;
}

INSTANTIATE_TEST_SUITE_P(By, StuckTerminal,
                         testing::Combine(every_obstacle(), testing::Values(sigterm, sigquit)),
                         stuck_name);

TEST_P(StuckTerminal, lets_a_wizard_end_that_draws) {
    ApplyStage stage(ApplyWait::silent_server);
    stage.open(wizard);
    getStuck();
    const Death& death = std::get<Death>(GetParam());
    expect_end(wizard, death);
    if (!death.is_crash) stage.expectServerTold();
}

TEST_P(StuckTerminal, lets_a_wizard_end_that_has_nothing_to_say) {
    wizard.waitForScreen(Stop::password);
    std::get<Obstacle>(GetParam()).raise(wizard);
    expect_end(wizard, std::get<Death>(GetParam()));
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

TEST_F(StoppedOutput, of_a_key_lets_the_wizard_end) { expect_end(wizard, sigint); }

// The key starts the output again.
TEST_F(StoppedOutput, ends_with_the_interrupt_key_as_ever) {
    wizard.press(Key::ctrl_c);
    EXPECT_TRUE(is_aborted(wizard));
}

}  // namespace
