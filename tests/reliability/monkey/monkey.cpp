#include "tests/reliability/monkey/monkey.h"

#include <csignal>

#include "tests/e2e/apply_screen.h"
#include "tests/e2e/endings.h"
#include "tests/e2e/key_wait.h"
#include "tests/reliability/signals/stopping.h"
#include "tests/support/expect_screen.h"
#include "tests/support/process.h"
#include "tests/support/wait_until.h"

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

}  // namespace

Monkey::Monkey(Stop screen, std::uint32_t seed) : home(screen), random(seed) {
    start();
}

void Monkey::start() {
    wizard.reset();
    // A lone escape would make curses wait for the rest of a key for a second each time.
    wizard = std::make_unique<WizardRun>(EnvironmentChanges{{"ESCDELAY", "10"}});
    wizard->walk(Stop::password, home);
}

void Monkey::play(int events) {
    for (int event = 1; event <= events && !testing::Test::HasFailure(); ++event) {
        if (hasEnded()) {
            expectProperEnd();
            ++restart_count;
            start();
        }
        SCOPED_TRACE("event " + std::to_string(event));
        doSomething();
        if (event % events_between_looks == 0 || event == events)
            expectScreenAsRedrawn();
    }
}

void Monkey::doSomething() {
    const std::uint32_t dice = chance(100);
    if (dice < 50)
        pressKey();
    else if (dice < 75)
        typeBytes();
    else if (dice < 90)
        resize();
    else if (dice < 98)
        resizeStorm();
    else
        stopAndGoOn();
}

void Monkey::pressKey() {
    wizard->press(keys[chance(std::size(keys))]);
}

void Monkey::typeBytes() {
    if (chance(3) == 0)
        wizard->type(texts[chance(std::size(texts))]);
    else
        wizard->type(std::string(1, static_cast<char>('a' + chance(26))));
}

void Monkey::resize() {
    const auto rows = least_rows + static_cast<int>(chance(most_rows - least_rows + 1));
    const auto cols = least_cols + static_cast<int>(chance(most_cols - least_cols + 1));
    // From the least to the most of both sides at once, and back.
    switch (chance(4)) {
        case 0:
            return wizard->resize(least_rows, least_cols);
        case 1:
            return wizard->resize(most_rows, most_cols);
        default:
            return wizard->resize(rows, cols);
    }
}

void Monkey::resizeStorm() {
    // The keys before it may end the wizard at any moment.
    for (std::uint32_t left = 1 + chance(10); left > 0 && !hasEnded(); --left)
        kill(wizard->pid(), SIGWINCH);
}

void Monkey::stopAndGoOn() {
    const bool resizes = chance(2) == 0;
    settle();
    if (hasEnded())
        return;
    stop(*wizard);
    if (resizes)
        resize();
    go_on(*wizard);
}

bool Monkey::hasEnded() const {
    return !process_running(wizard->pid());
}

void Monkey::expectProperEnd() {
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

void Monkey::settle() {
    const auto settled = [this] {
        wizard
            ->alternateScreen();  // reads what was drawn: nobody waits for a key who can't draw on
        return waits_for_key(wizard->pid()) || hasEnded();
    };
    wait_until(settled, "the wizard waited for a key");
}

void Monkey::expectScreenAsRedrawn() {
    settle();
    const ScreenImage before = wizard->image();
    // While the answers are applied the screen changes by itself.
    if (hasEnded() || (!progress_lines(before).empty() && !before.shows(" OK ")))
        return;
    wizard->signal(SIGWINCH);
    settle();
    ASSERT_FALSE(hasEnded());
    EXPECT_SAME_LOOK(before, wizard->image());
}
