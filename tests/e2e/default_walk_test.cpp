// A user who accepts what every screen offers, up to the last screen.

#include <gtest/gtest.h>

#include "tests/e2e/wizard_run.h"
#include "tests/support/golden.h"

namespace {

// Every screen looks as its golden file in this folder.
void expect_every_screen(WizardRun& wizard, const std::string& folder) {
    for (int place = 0; place < stop_count; ++place) {
        const Stop stop = stop_at(place);
        wizard.waitForScreen(stop);
        EXPECT_SCREEN(wizard, "golden/" + folder + "/" + facts_of(stop).name);
        if (stop != Stop::sendmail)
            wizard.answer(stop, {});
    }
}

TEST(DefaultWalk, shows_every_screen_in_turn_with_its_defaults) {
    WizardRun wizard;
    expect_every_screen(wizard, "default_walk");
}

// With four interfaces besides the loopback.
TEST(SmallTerminalOnHostWithFourInterfaces, shows_every_screen_whole) {
    WizardRun wizard(20, 72);
    expect_every_screen(wizard, "small_terminal");
}

}  // namespace
