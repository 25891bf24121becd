// The way through the screens, up to the last answer.

#include <gtest/gtest.h>

#include "tests/e2e/endings.h"
#include "tests/support/golden.h"

namespace {

// What shows the interfaces of the host has pictures of its own; else the pictures of the screens'
// own tests are good, which are of this domain.
void expect_every_screen(WizardRun& wizard, const std::string& host, const std::string& size) {
    Answers answers;
    answers.domain = "example.com";
    for (const Stop stop : every_stop()) {
        const StopFacts& facts = facts_of(stop);
        const std::string at_size = size.empty() ? facts.golden : facts.name + size;
        wizard.waitForScreen(stop);
        EXPECT_SCREEN(wizard, facts.showsHost() ? "golden/" + host + "/" + facts.name
                                                : "../screens/golden/" + at_size);
        if (stop != Stop::sendmail)
            wizard.answer(stop, answers);
    }
}

TEST(DefaultWalk, shows_every_screen_in_turn_with_its_defaults) {
    WizardRun wizard;
    expect_every_screen(wizard, "default_walk", "");
}

// With four interfaces besides the loopback.
TEST(SmallTerminalOnHostWithFourInterfaces, shows_every_screen_whole) {
    WizardRun wizard(20, 72);
    expect_every_screen(wizard, "small_terminal", "_at_20x72");
}

TEST(WayBack, and_forward_passes_the_listeners_of_the_services_that_are_chosen_then) {
    WizardRun wizard;
    Answers answers;
    answers.services = {true, false, true};
    wizard.walk(Stop::password, Stop::relay, answers);
    for (const Stop stop : {Stop::relay, Stop::webmail, Stop::pop3})
        wizard.pressBack(stop);
    wizard.answerBoxes(Stop::services, {false, true, false});
    wizard.pressNext(Stop::imap);
    wizard.pressBack(Stop::relay);
    wizard.waitForScreen(Stop::imap);
}

TEST(FirstScreen, is_left_by_its_exit_button_with_status_0) {
    WizardRun wizard;
    wizard.pressBack(Stop::password);
    EXPECT_TRUE(ends_with(wizard, exited(0), "\nTELUMA Configuration Wizard Aborted!\n"));
}

}  // namespace
