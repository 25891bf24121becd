#include "tests/e2e/endings.h"

testing::AssertionResult leaves_terminal_usable(WizardRun& wizard) {
    if (wizard.modes() != wizard.modesBefore())
        return testing::AssertionFailure()
               << "the modes are " << wizard.modes() << " and were " << wizard.modesBefore();
    if (!wizard.image().cursor().visible)
        return testing::AssertionFailure() << "the cursor is hidden";
    if (wizard.alternateScreen())
        return testing::AssertionFailure() << "the alternate screen is still shown";
    return testing::AssertionSuccess();
}

testing::AssertionResult ends_with(WizardRun& wizard, const ExitStatus& status,
                                   const std::string& printed) {
    const ExitStatus actual = wizard.waitExit();
    if (actual != status)
        return testing::AssertionFailure() << "ended with " << actual;
    if (wizard.printedAfterwards() != printed)
        return testing::AssertionFailure() << "printed: " << wizard.printedAfterwards();
    return leaves_terminal_usable(wizard);
}

testing::AssertionResult is_aborted(WizardRun& wizard) {
    return ends_with(wizard, exited(1), "\nTELUMA Configuration Wizard Aborted!\n");
}
