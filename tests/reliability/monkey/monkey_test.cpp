// Nothing that can be done to the wizard by keys, resizes and signals breaks it or garbles its
// screen.
//
// Each case plays 1,000 events. For a longer run: TELUMA_MONKEY_EVENTS=100000, events a case, and
// TELUMA_MONKEY_SEED=7 for other ones than usual; with more time for it, as in
//
//     TELUMA_MONKEY_EVENTS=50000 ctest --preset asan -j4 --timeout 7200 -R Monkey
//
// A failure tells its seed and the number of its event.

#include <gtest/gtest.h>

#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <random>
#include <string>

#include "tests/e2e/endings.h"
#include "tests/reliability/signals/wizard_signals.h"
#include "tests/support/expect_screen.h"
#include "tests/support/process.h"

namespace {

constexpr int least_rows = 20;
constexpr int most_rows = 80;
constexpr int least_cols = 72;
constexpr int most_cols = 250;

// Keys that do much are pressed more often.
constexpr Key keys[] = {Key::tab,           Key::tab,    Key::tab,  Key::tab,       Key::enter,
                        Key::enter,         Key::space,  Key::up,   Key::down,      Key::down,
                        Key::left,          Key::right,  Key::home, Key::end,       Key::page_up,
                        Key::page_down,     Key::insert, Key::del,  Key::backspace, Key::backspace,
                        Key::backspace_as_8};

// Besides letters: digits for ports, what a shell would make something of, what takes more than one
// byte or is no character at all, control characters that a terminal hands through.
constexpr const char* texts[] = {"0",    "25",   "9999", "\"",   "$",    "`",    "\\",
                                 "%s",   "é",    "漢字", "\xff", "\xc3", "\x01", "\x02",
                                 "\x05", "\x0b", "\x0c", "\x18", "\x1e", "\x7f"};

constexpr int events_between_looks = 25;

// Somebody who knows nothing: presses keys, resizes the terminal and sends signals at random. What
// comes when depends on the seed alone, so that a failure can be repeated.
//
// The wizard ends now and then, by "Exit" or because all the answers have been applied. The monkey
// expects that it ended in one of these ways, starts another and goes on.
class Monkey {
  public:
    // Starts from a wizard on the screen `home`.
    Monkey(Stop screen, std::uint32_t seed) : home(screen), random(seed) { start(); }

    // Does so many things. Every now and then, and at the end, expects that the screen looks like
    // one that is drawn afresh.
    void play(int events) {
        for (int event = 1; event <= events && !testing::Test::HasFailure(); ++event) {
            if (hasEnded()) {
                expectProperEnd();
                start();
            }
            SCOPED_TRACE("event " + std::to_string(event));
            doSomething();
            if (event % events_between_looks == 0 || event == events) expectScreenAsRedrawn();
        }
    }

  private:
    void start() {
        wizard.reset();
        // A lone escape would make curses wait for the rest of a key for a second each time.
        wizard = std::make_unique<WizardRun>(ProgramSetup{{"env", "ESCDELAY=10", WIZARD_PROGRAM}});
        wizard->walk(Stop::password, home);
    }

    void doSomething() {
        const int dice = chance(100);
        if (dice < 50)
            wizard->press(keys[chance(std::size(keys))]);
        else if (dice < 75)
            typeBytes();
        else if (dice < 90)
            resize();
        else if (dice < 98)
            resizeStorm();
        else
            stopAndGoOn();
    }

    void typeBytes() {
        if (chance(3) == 0)
            wizard->type(texts[chance(std::size(texts))]);
        else
            wizard->type(std::string(1, static_cast<char>('a' + chance(26))));
    }

    // Also from the least to the most of both sides at once, and back.
    void resize() {
        const int dice = chance(4);
        const int rows = least_rows + chance(most_rows - least_rows + 1);
        const int cols = least_cols + chance(most_cols - least_cols + 1);
        if (dice == 0)
            wizard->resize(least_rows, least_cols);
        else if (dice == 1)
            wizard->resize(most_rows, most_cols);
        else
            wizard->resize(rows, cols);
    }

    void resizeStorm() {
        // The keys before it may end the wizard at any moment.
        for (int left = 1 + chance(10); left > 0 && !hasEnded(); --left)
            kill(wizard->pid(), SIGWINCH);
    }

    void stopAndGoOn() {
        const bool resizes = chance(2) == 0;
        if (!wizard->comesToRest()) return;
        stop(*wizard);
        if (resizes) resize();
        wizard->signal(SIGCONT);
    }

    bool hasEnded() const { return !process_running(wizard->pid()); }

    void expectProperEnd() {
        const ExitStatus status = wizard->waitExit();
        const std::string printed = wizard->printedAfterwards();
        // Between its lines the terminal shows keys that were pressed when curses had let go of it.
        const bool left_by_exit =
            printed.find("TELUMA Configuration Wizard Aborted!\n") != std::string::npos;
        const bool has_applied =
            printed.find("Your first installation steps are now completed.") != std::string::npos;
        EXPECT_EQ(status, exited(0));
        EXPECT_TRUE(left_by_exit || has_applied) << printed;
        EXPECT_TRUE(gives_terminal_back(*wizard));
    }

    void expectScreenAsRedrawn() {
        if (!wizard->comesToRest()) return;
        const ScreenImage before = wizard->image();
        // While the answers are applied the screen changes by itself.
        if (before.shows("Operations pending") && !before.shows(" OK ")) return;
        wizard->signal(SIGWINCH);
        wizard->waitForKey();
        EXPECT_SAME_LOOK(before, wizard->image());
    }

    int chance(size_t below) { return static_cast<int>(random() % below); }

    Stop home;
    std::mt19937 random;
    std::unique_ptr<WizardRun> wizard;
};

int number_from(const char* variable, int otherwise) {
    const char* value = std::getenv(variable);
    return value == nullptr ? otherwise : std::stoi(value);
}

class MonkeyBusiness : public testing::TestWithParam<int> {};

TEST_P(MonkeyBusiness, leaves_a_wizard_whose_screen_is_as_freshly_drawn) {
    constexpr int usual_events = 1000;
    const int seed = number_from("TELUMA_MONKEY_SEED", 1) * 1000 + GetParam();
    SCOPED_TRACE("seed " + std::to_string(seed));
    Monkey(stop_at(GetParam()), static_cast<std::uint32_t>(seed))
        .play(number_from("TELUMA_MONKEY_EVENTS", usual_events));
}

INSTANTIATE_TEST_SUITE_P(From, MonkeyBusiness, testing::Range(0, stop_count),
                         [](const auto& place) { return facts_of(stop_at(place.param)).name; });

}  // namespace
