// The way through the screens, up to the last answer, on several hosts; the build file lists their
// interfaces.

#include <gtest/gtest.h>

#include "tests/e2e/endings.h"
#include "tests/e2e/frame.h"
#include "tests/support/expect_screen.h"
#include "tests/support/golden.h"

namespace {

// What shows the interfaces of the host has pictures of its own; else the pictures of the screens'
// own tests are good, which are of this domain.
void expect_every_screen(WizardRun& wizard, const std::string& host, const std::string& size) {
    for (const Stop stop : every_stop()) {
        const StopFacts& facts = facts_of(stop);
        const std::string at_size = size.empty() ? facts.golden : facts.name + size;
        wizard.waitForScreen(stop);
        EXPECT_SCREEN(wizard, facts.showsHost() ? "golden/" + host + "/" + facts.name
                                                : "../screens/golden/" + at_size);
        if (stop == Stop::domain) wizard.retype(50, "example.com");
        wizard.type(std::string(facts.accepted) + (stop == Stop::sendmail ? "" : "\n"));
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

TEST(FirstScreen, is_left_by_its_exit_button_with_status_0) {
    WizardRun wizard;
    wizard.pressBack(Stop::password);
    EXPECT_TRUE(ends_with(wizard, exited(0), "\nTELUMA Configuration Wizard Aborted!\n"));
}

// One is down, two are in one network, and one's network is within that of the next.
TEST(HostWithManyKinds, offers_what_is_up_and_each_network_once) {
    WizardRun wizard;
    wizard.walk(Stop::password, Stop::webadmin);
    EXPECT_PICTURE(frame_on(wizard.image()).image, R"(
┌─────────────────────────────────┐
│    Select WebAdmin Interface    │
├─────────────────────────────────┤
│Interface:                Port:  │
│$ all    : 0.0.0.0        9000   │
│  lo     : 127.0.0.1      9000   │
│  left   : 192.168.1.20   9000   │
│  right  : 192.168.1.130  9000   │
│  narrow : 172.16.1.5     9000   │
│  wide   : 172.16.7.9     9000   │
│                                 │
│                                 │
│  Back                      OK   │
│                                 │
└─────────────────────────────────┘
)");
    wizard.walk(Stop::webadmin, Stop::relay);
    // The list stands three lines below the title.
    EXPECT_PICTURE(frame_on(wizard.image()).image.region(5, 1, 4, 30), R"(
[x] 127.0.0.0/255.0.0.0
[x] 192.168.1.0/255.255.255.0
[x] 172.16.0.0/255.255.0.0

)");
}

// lan1, lan2 ... with the addresses 10.1.0.1, 10.2.0.1 ...: more than are taken, and far more than
// there is room for.
TEST(HostWith40Interfaces, offers_28_and_the_loopback_of_which_the_last_can_be_chosen_unseen) {
    constexpr int far = 50;  // more than any list has rows: the bar ends up on the last
    WizardRun wizard(20, 72);
    const auto enlarged = [&wizard] {
        wizard.waitForKey();
        wizard.resize(60, 200);
        wizard.waitForKey();
        return wizard.image();
    };
    wizard.walk(Stop::password, Stop::webadmin);
    wizard.pressTimes(Key::down, far);
    wizard.press(Key::tab);
    wizard.retype(5, "1234");
    const ScreenImage webadmin = enlarged();
    EXPECT_TRUE(webadmin.shows("│  lan27 : 10.27.0.1  9000   │"));
    EXPECT_TRUE(webadmin.shows("│$ lan28 : 10.28.0.1  1234   │"));
    EXPECT_FALSE(webadmin.shows("lan29"));

    wizard.pressNext(Stop::webadmin);
    wizard.walk(Stop::smtp, Stop::relay);
    wizard.resize(20, 72);
    wizard.waitForKey();
    wizard.pressTimes(Key::down, far);
    wizard.press(Key::space);
    const ScreenImage relay = enlarged();
    EXPECT_TRUE(relay.shows("[x] 10.27.0.0/255.255.0.0"));
    EXPECT_TRUE(relay.shows("[ ] 10.28.0.0/255.255.0.0"));
    EXPECT_FALSE(relay.shows("10.29.0.0"));
}

}  // namespace
