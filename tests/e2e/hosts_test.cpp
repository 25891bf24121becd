// What the listeners' screens and the relay screen make of the interfaces of a host. Each suite has
// a host of its own; the build file lists their interfaces.

#include <gtest/gtest.h>

#include "tests/e2e/frame.h"
#include "tests/e2e/wizard_run.h"
#include "tests/support/expect_screen.h"
#include "tests/support/process.h"

namespace {

ScreenImage webadmin_frame(WizardRun& wizard) {
    wizard.walk(Stop::password, Stop::webadmin);
    return frame_on(wizard.image()).image;
}

// The list of the relay screen, three lines below its title.
ScreenImage relay_list(WizardRun& wizard, int rows) {
    wizard.walk(Stop::webadmin, Stop::relay);
    return frame_on(wizard.image()).image.region(5, 1, rows, 30);
}

TEST(HostWithoutInterfaces, has_all_to_listen_at_and_no_network_to_relay_for) {
    run_command({"/bin/sh", "-c", "PATH=$PATH:/usr/sbin:/sbin ip address flush dev lo"});
    WizardRun wizard;
    EXPECT_PICTURE(webadmin_frame(wizard), R"(
┌─────────────────────────┐
│Select WebAdmin Interface│
├─────────────────────────┤
│Interface:       Port:   │
│$ all : 0.0.0.0  9000    │
│                         │
│                         │
│  Back              OK   │
│                         │
└─────────────────────────┘
)");
    EXPECT_PICTURE(relay_list(wizard, 1), "\n\n");
    wizard.press(Key::down);
    wizard.press(Key::up);
    wizard.pressNext(Stop::relay);
    wizard.waitForScreen(Stop::sendmail);
}

// One is down, two are in one network, and one's network is within that of the next.
TEST(HostWithManyKinds, offers_what_is_up_and_each_network_once) {
    WizardRun wizard;
    EXPECT_PICTURE(webadmin_frame(wizard), R"(
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
    EXPECT_PICTURE(relay_list(wizard, 4), R"(
[x] 127.0.0.0/255.0.0.0
[x] 192.168.1.0/255.255.255.0
[x] 172.16.0.0/255.255.0.0

)");
}

// lan1, lan2 ... with the addresses 10.1.0.1, 10.2.0.1 ...: more than are taken, and far more than
// there is room for.
class HostWith40Interfaces : public testing::Test {
  protected:
    static constexpr int far = 50;  // more than any list has rows: the bar ends up on the last

    /// Sees what was out of sight.
    ScreenImage enlarged() {
        wizard.waitForKey();
        wizard.resize(60, 200);
        wizard.waitForKey();
        return wizard.image();
    }

    WizardRun wizard{20, 72};
};

TEST_F(HostWith40Interfaces, has_28_and_the_loopback_of_which_the_last_can_be_chosen_out_of_sight) {
    wizard.walk(Stop::password, Stop::webadmin);
    wizard.pressTimes(Key::down, far);
    wizard.press(Key::tab);
    wizard.retype(5, "1234");
    const ScreenImage screen = enlarged();
    EXPECT_TRUE(screen.shows("│  lan27 : 10.27.0.1  9000   │"));
    EXPECT_TRUE(screen.shows("│$ lan28 : 10.28.0.1  1234   │"));
    EXPECT_FALSE(screen.shows("lan29"));
    wizard.pressNext(Stop::webadmin);
    wizard.waitForScreen(Stop::smtp);
}

TEST_F(HostWith40Interfaces, has_their_networks_of_which_the_last_can_be_unticked_out_of_sight) {
    wizard.walk(Stop::password, Stop::relay);
    wizard.pressTimes(Key::down, far);
    wizard.press(Key::space);
    const ScreenImage screen = enlarged();
    EXPECT_TRUE(screen.shows("[x] 10.27.0.0/255.255.0.0"));
    EXPECT_TRUE(screen.shows("[ ] 10.28.0.0/255.255.0.0"));
    EXPECT_FALSE(screen.shows("10.29.0.0"));
}

}  // namespace
