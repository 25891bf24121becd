// The way through the screens, up to the last answer, on several hosts; the build file lists their
// interfaces.

#include <gtest/gtest.h>

#include "tests/e2e/wizard_run.h"
#include "tests/support/expect_screen.h"
#include "tests/support/frame.h"
#include "tests/support/golden.h"
#include "tests/support/local_port.h"

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
        if (stop == Stop::domain) wizard.retype("example.com");
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

// lan1, lan2 ... with the addresses 10.1.0.1, 10.2.0.1 ...: more than are taken.
TEST(HostWith40Interfaces, offers_28_and_the_loopback) {
    WizardRun wizard(60, 200);
    wizard.walk(Stop::password, Stop::webadmin);
    EXPECT_TRUE(wizard.image().shows("│  lan28 : 10.28.0.1  9000   │"));
    EXPECT_FALSE(wizard.image().shows("lan29"));
    wizard.walk(Stop::webadmin, Stop::relay);
    EXPECT_TRUE(wizard.image().shows("[x] 10.28.0.0/255.255.0.0"));
    EXPECT_FALSE(wizard.image().shows("10.29.0.0"));
}

// With a real port.
TEST(Listener, at_a_taken_port_is_warned_of_unless_that_is_at_another_interface) {
    constexpr int ethernet_row = 2;
    WizardRun wizard;
    wizard.walk(Stop::password, Stop::webadmin);
    LocalPort program(9000);
    program.open("192.168.7.2");
    wizard.answerListener(Stop::webadmin, {ethernet_row});
    wizard.waitForDialog("Warning!");
    EXPECT_NE(words_in_frame(wizard.image()).find("interface 192.168.7.2."), std::string::npos);
    wizard.press(Key::tab);
    wizard.press(Key::enter);
    wizard.answerListener(Stop::webadmin, {ethernet_row + 1});
    wizard.pressBack(Stop::smtp);

    program.close();
    program.open();
    wizard.answerListener(Stop::webadmin, {});
    EXPECT_SCREEN(wizard, "../screens/golden/port_in_use_of_WebAdmin");
    program.close();
    wizard.press(Key::enter);
    wizard.waitForScreen(Stop::smtp);
}

}  // namespace
