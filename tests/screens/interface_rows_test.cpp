#include <gtest/gtest.h>

#include "tests/screens/listener_rig.h"
#include "tests/support/expect_screen.h"
#include "tests/support/local_port.h"
#include "wizard/base/screen_state.h"

namespace {

RigSetup with_interfaces(const std::vector<InterfaceFacts>& interfaces) {
    RigSetup setup;
    setup.interfaces = interfaces;
    return setup;
}

const std::vector<InterfaceFacts> long_facts = {
    {"all", "0.0.0.0"}, {"lo", "127.0.0.1"}, {"enp0s31f6", "192.168.100.200"}};

TEST(ListenerFrame, is_10_rows_high_and_27_columns_wide_with_one_interface) {
    WizardRig wizard(state_webadmin, with_interfaces({{"all", "0.0.0.0"}}));
    wizard.play({});
    EXPECT_PICTURE(wizard.image().region(7, 26, 10, 27), R"(
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
}

TEST(ListenerFrame, grows_with_the_widest_name_and_address) {
    WizardRig wizard(state_smtp, with_interfaces(long_facts));
    wizard.play({Key::down, Key::down, Key::tab});
    const ScreenImage frame = wizard.image().region(6, 20, 12, 40);
    EXPECT_PICTURE(frame, R"(
┌──────────────────────────────────────┐
│        Select SMTP Interface         │
├──────────────────────────────────────┤
│Interface:                     Port:  │
│  all       : 0.0.0.0          25     │
│  lo        : 127.0.0.1        25     │
│$ enp0s31f6 : 192.168.100.200  25     │
│                                      │
│                                      │
│  Back                           OK   │
│                                      │
└──────────────────────────────────────┘
)");
    EXPECT_EQ(frame.cursor().position, (Position{6, 32 + 2}));
}

}  // namespace
