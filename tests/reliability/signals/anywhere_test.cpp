// What can happen to the wizard wherever it is: signals that end it, a terminal that goes away, a
// stop. What they leave of the terminal, the private directory and the server.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <tuple>
#include <variant>

#include "tests/e2e/apply_waits.h"
#include "tests/e2e/dialogs.h"
#include "tests/e2e/endings.h"
#include "tests/reliability/signals/wizard_signals.h"
#include "tests/support/case_name.h"
#include "tests/support/expect_screen.h"
#include "tests/support/files.h"

namespace {

// Somewhere that the wizard can be: on a screen, in a dialog, in a wait while it applies the
// answers. The screens share their wait for a key, so that one stands for all.
struct Place {
    std::string name;
    std::variant<Stop, Dialog, ApplyWait> where;
};

const Place some_screen = {"screen", Stop::domain};

std::vector<Place> every_place() {
    std::vector<Place> places = {some_screen};
    for (int i = 0; i <= static_cast<int>(Dialog::pending); ++i) {
        const auto dialog = static_cast<Dialog>(i);
        places.push_back({"dialog_" + dialog_name({dialog, 0}), dialog});
    }
    for (int i = 0; i <= static_cast<int>(ApplyWait::final_ok); ++i) {
        const auto wait = static_cast<ApplyWait>(i);
        places.push_back({"wait_" + apply_wait_name({wait, 0}), wait});
    }
    return places;
}

// Brings one wizard, which is made after it, to a place.
class PlaceStage {
  public:
    explicit PlaceStage(const Place& place) {
        if (const Dialog* kind = std::get_if<Dialog>(&place.where)) dialog.emplace(*kind);
        if (const ApplyWait* kind = std::get_if<ApplyWait>(&place.where)) wait.emplace(*kind);
    }

    void open(WizardRun& wizard) {
        if (dialog)
            dialog->open(wizard);
        else if (wait)
            wait->open(wizard);
        else
            wizard.walk(Stop::password, Stop::domain);
    }

    // After the wizard's end.
    void expectServerTold() const {
        if (wait) wait->expectServerTold();
    }

  private:
    std::optional<DialogStage> dialog;
    std::optional<ApplyStage> wait;
};

using PlaceAndDeath = std::tuple<Place, Death>;

class DeathAt : public testing::TestWithParam<PlaceAndDeath> {};

std::string place_and_death(const testing::TestParamInfo<PlaceAndDeath>& info) {
    return std::get<Place>(info.param).name + "_of_" + std::get<Death>(info.param).name;
}

TEST_P(DeathAt, leaves_a_usable_terminal) {
    const auto& [place, death] = GetParam();
    PlaceStage stage(place);
    DyingWizard wizard;
    stage.open(wizard);
    wizard.dieOf(death);
}

INSTANTIATE_TEST_SUITE_P(Every, DeathAt,
                         testing::Combine(testing::ValuesIn(every_place()),
                                          testing::Values(sigsegv)),
                         place_and_death);

// Requests to end, which are what an interrupt is; the signals of a crash; and the others that end
// a program which does nothing about them.
const Death other_deaths[] = {
    sigterm,
    sighup,
    sigquit,
    {"SIGBUS", SIGBUS},
    {"SIGILL", SIGILL},
    {"SIGFPE", SIGFPE},
    {"SIGABRT", SIGABRT},
    {"SIGSYS", SIGSYS},
    {"SIGTRAP", SIGTRAP},
    {"SIGXCPU", SIGXCPU},
    {"SIGUSR1", SIGUSR1},
    {"SIGUSR2", SIGUSR2},
    {"SIGVTALRM", SIGVTALRM},
    {"SIGPROF", SIGPROF},
    {"SIGALRM", SIGALRM},
};

INSTANTIATE_TEST_SUITE_P(Some, DeathAt,
                         testing::Combine(testing::Values(some_screen),
                                          testing::ValuesIn(other_deaths)),
                         place_and_death);

TEST(QuitKey, ends_the_wizard_like_a_crash_and_leaves_a_usable_terminal) {
    DyingWizard wizard;
    wizard.waitForScreen(Stop::password);
    wizard.type("\x1c");
    EXPECT_EQ(wizard.waitExit(), killed_by(SIGQUIT));
    EXPECT_TRUE(leaves_terminal_usable(wizard));
}

// The wizard that unshare(1) has started and waits for.
pid_t child_of(pid_t process) {
    const std::string name = std::to_string(process);
    std::string path = "/proc/";
    path.append(name).append("/task/").append(name).append("/children");
    return std::stoi(read_file(path));
}

// As the first process of a container, which the kernel lets no signal end that takes its default
// course.
TEST(FirstProcess, ends_of_what_would_crash_another_and_leaves_the_terminal_usable) {
    for (const int signal : {SIGQUIT, SIGUSR1}) {
        WizardRun wizard({"unshare", "--pid", "--fork", "--kill-child", WIZARD_PROGRAM});
        wizard.waitForText(title_of(Stop::password));
        const pid_t process = child_of(wizard.pid());
        const std::string directory = link_target("/proc/" + std::to_string(process) + "/cwd");
        ASSERT_NE(directory.find("/teluma-wizard."), std::string::npos);
        kill(process, signal);
        EXPECT_TRUE(ends_with(wizard, exited(128 + signal), "")) << signal;
        std::filesystem::remove_all(directory);
    }
}

class AtPlace : public testing::TestWithParam<Place> {
  protected:
    AtPlace() { stage.open(wizard); }

    PlaceStage stage{GetParam()};
    DyingWizard wizard;
};

using HangUpAt = AtPlace;

INSTANTIATE_TEST_SUITE_P(Some, HangUpAt,
                         testing::Values(some_screen, Place{"dialog", Dialog::message},
                                         Place{"wait", ApplyWait::silent_server},
                                         Place{"last_dialog", ApplyWait::final_ok}),
                         CaseName());

TEST_P(HangUpAt, ends_the_wizard_and_a_known_server) {
    wizard.dieOfHangUp();
    stage.expectServerTold();
}

// No SIGHUP comes with it.
TEST(EndOfInput, on_the_keyboard_ends_the_wizard) {
    WizardRun wizard(std::vector<std::string>{"sh", "-c", "exec " WIZARD_PROGRAM " </dev/null"});
    EXPECT_TRUE(is_aborted(wizard));
}

using StopAt = AtPlace;

// But for waits that are over before it has been looked at them.
std::vector<Place> lasting_places() {
    std::vector<Place> places = every_place();
    const auto passes = [](const Place& place) {
        return place.name == "wait_new_pid_file" || place.name == "wait_before_connecting";
    };
    places.erase(std::remove_if(places.begin(), places.end(), passes), places.end());
    return places;
}

INSTANTIATE_TEST_SUITE_P(Lasting, StopAt, testing::ValuesIn(lasting_places()), CaseName());

// The terminal is the user's in between, and the same screen is there afterwards.
TEST_P(StopAt, gives_the_terminal_away_and_takes_it_back) {
    const TerminalModes modes = wizard.modes();
    const ScreenImage before = wizard.image();
    stop(wizard);
    EXPECT_TRUE(leaves_terminal_usable(wizard));
    go_on(wizard);
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
    go_on(wizard);
    wizard.waitForKey();
    wizard.type("a");
    wizard.waitForText("*");
}

TEST_F(StoppedWizard, draws_its_screen_at_the_size_that_the_terminal_got_meanwhile) {
    wizard.resize(50, 132);
    go_on(wizard);
    wizard.waitForKey();
    WizardRun calm(50, 132);
    calm.waitForScreen(Stop::password);
    EXPECT_SAME_LOOK(calm.image(), wizard.image());
}

TEST_F(StoppedWizard, that_finds_too_small_a_terminal_ends) {
    wizard.resize(19, 71);
    go_on(wizard);
    EXPECT_TRUE(ends_with(wizard, exited(0),
                          "Please enlarge your window so it will have at least 72 columns and 20 "
                          "lines!\n"));
}

}  // namespace
