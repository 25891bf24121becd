#include "tests/e2e/endings.h"

#include <algorithm>
#include <cstring>
#include <regex>

#include "tests/support/emulator.h"

namespace {

// Letters that turn into lines where the line drawing characters are still switched on.
constexpr const char* letters = "lqx";

// What this terminal does at the switch to the normal screen hides what the program has left
// switched on, so the output is looked at without it.
testing::AssertionResult prints_plainly(WizardRun& wizard) {
    static const std::regex switch_to_normal("\x1b\\[\\?1049l");
    const ScreenImage screen = wizard.image();
    const int cols = std::max(screen.cols(), static_cast<int>(std::strlen(letters)) + 1);
    Emulator emulator(std::max(screen.rows(), 2), cols, "xterm-256color");
    emulator.feed(std::regex_replace(wizard.output(), switch_to_normal, ""));
    emulator.feed(std::string("\r\n") + letters);
    const ScreenImage printed = emulator.image();
    const std::optional<Position> at = printed.find(letters);
    if (!at) return testing::AssertionFailure() << "letters are not printed as such";
    Cell plain;
    plain.text = letters[0];
    if (printed.cell(at->row, at->col) != plain)
        return testing::AssertionFailure() << "letters look " << printed.cell(at->row, at->col);
    return testing::AssertionSuccess();
}

}  // namespace

testing::AssertionResult gives_terminal_back(WizardRun& wizard) {
    if (wizard.modes() != wizard.modesBefore())
        return testing::AssertionFailure()
               << "the modes are " << wizard.modes() << " and were " << wizard.modesBefore();
    if (!wizard.image().cursor().visible)
        return testing::AssertionFailure() << "the cursor is hidden";
    if (wizard.alternateScreen())
        return testing::AssertionFailure() << "the alternate screen is still shown";
    return prints_plainly(wizard);
}

testing::AssertionResult leaves_terminal_usable(WizardRun& wizard) {
    if (wizard.hasUnreadInput())
        return testing::AssertionFailure() << "what was typed ahead is left to the next program";
    return gives_terminal_back(wizard);
}

testing::AssertionResult ends_with(WizardRun& wizard, const ExitStatus& status,
                                   const std::string& printed) {
    const ExitStatus actual = wizard.waitExit();
    if (actual != status) return testing::AssertionFailure() << "ended with " << actual;
    if (wizard.printedAfterwards() != printed)
        return testing::AssertionFailure() << "printed: " << wizard.printedAfterwards();
    return leaves_terminal_usable(wizard);
}

testing::AssertionResult is_aborted(WizardRun& wizard) {
    return ends_with(wizard, exited(1), "\nTELUMA Configuration Wizard Aborted!\n");
}

testing::AssertionResult is_refused_as_too_small(WizardRun& wizard) {
    return ends_with(
        wizard, exited(0),
        "Please enlarge your window so it will have at least 72 columns and 20 lines!\n");
}
