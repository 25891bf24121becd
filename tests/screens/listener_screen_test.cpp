// What is particular about the screens of the listeners; their answers are the walk model's.

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/screens/screen_facts.h"
#include "tests/support/case_name.h"
#include "tests/support/expect_screen.h"
#include "tests/support/golden.h"
#include "tests/support/local_port.h"

namespace {

class EachListener : public testing::TestWithParam<ListenerFacts> {
  protected:
    EachListener() { std::fill_n(wizard_settings.service_enabled, 3, 1); }

    const ListenerFacts& listener = GetParam();
    WizardRig wizard{listener.state};
    LocalPort port;
    const std::string number = std::to_string(port.number());
};

TEST_P(EachListener, refuses_what_is_no_port_with_an_error) {
    wizard.play(answer_listener(row_eth0, "8x"));
    EXPECT_EQ(wizard.words(), "Error! The port must be a valid number in [0-65535] range! OK ");
}

TEST_P(EachListener, checks_the_port_of_the_chosen_interface_alone_under_a_pending_box) {
    port.open("127.0.0.1");
    wizard.waits.inSleep = [&] {
        EXPECT_EQ(screen_state, state_pending);
        EXPECT_EQ(wizard.words(),
                  "Operation pending! Please wait until the port is being checked! ");
    };
    wizard.play(answer_listener(row_eth0, number));
    EXPECT_EQ(wizard.waits.sleeps, std::vector<int>{0});
    EXPECT_FALSE(wizard.image().shows("Operation pending!"));
    EXPECT_EQ(screen_state, listener.state + 1);
}

TEST_P(EachListener, asks_whether_a_loopback_interface_is_meant) {
    wizard.play(answer_listener(row_lo, number));
    if (listener.isWebadmin() || listener.name == "POP3") {
        EXPECT_SCREEN(wizard.image(), "golden/loopback_question_" + listener.name);
    }
    EXPECT_EQ(wizard.words(),
              "WARNING! Selecting 127.0.0.1 will enable access to " + listener.name +
                  (listener.isWebadmin() ? " interface" : " service") +
                  " only from this machine and not remotely from other machines. Are you sure? No "
                  "Yes ");
}

TEST_P(EachListener, warns_of_a_port_that_is_taken_and_goes_back_to_it) {
    port.open();
    std::string warning;
    wizard.play(answer_listener(row_eth0, number) +
                std::vector<Step>{[&] { warning = wizard.words(); }, "\t", Key::enter});
    EXPECT_EQ(warning,
              "Warning! There is already an application that binds the " + number +
                  " port on the selected interface 127.0.0.2. Please stop that application and "
                  "remove it from the automatic startup daemons at boot. More information about "
                  "stopping common applications can be found in the "
                  "/opt/teluma/share/doc/REMOVE-OTHERS.txt document. Back Retry ");
    EXPECT_EQ(screen_state, listener.state);
    EXPECT_EQ(screen_focus(screen_state), 1);
}

TEST_P(EachListener, probes_again_under_a_pending_box_on_retry_which_keeps_a_services_port) {
    port.open();
    screen_focus(state_services) = 2;
    int warnings = 0;
    const Step count = [&] { warnings += wizard.image().shows("Warning!"); };
    wizard.play(answer_listener(row_lo, number) +
                std::vector<Step>{count, Key::enter, count, Key::enter, count,
                                  [&] { port.close(); }, Key::space});
    EXPECT_EQ(warnings, 3);
    EXPECT_EQ(wizard.waits.sleeps, (std::vector<int>{0, 0, 0, 0}));
    EXPECT_EQ(screen_state, listener.state + 1);
    EXPECT_EQ(screen_focus(state_services), listener.isWebadmin() ? 2 : 0);
    EXPECT_EQ(wizard_settings.*listener.port,
              listener.isWebadmin() ? port.number() : listener.defaultPort());
}

INSTANTIATE_TEST_SUITE_P(Screens, EachListener, testing::ValuesIn(all_listeners()), CaseName());

/// What the loopback question needs: the name of an interface at an address of this machine.
bool is_asked_for(const std::string& name) {
    RigSetup setup;
    setup.interfaces[row_lo].first = name;
    WizardRig wizard(state_webadmin, setup);
    const LocalPort free_port;
    wizard.play(answer_listener(row_lo, std::to_string(free_port.number())));
    return wizard.image().shows("WARNING!");
}

TEST(LoopbackInterface, is_one_whose_name_begins_with_lo) {
    for (const char* name : {"lo", "lo0", "lowlands"}) EXPECT_TRUE(is_asked_for(name)) << name;
    for (const char* name : {"eth0", "l", "LO", "xlo", ""})
        EXPECT_FALSE(is_asked_for(name)) << name;
}

/// A listener's screen with the bar on the last of the interfaces and the focus on its port.
ScreenImage with_interfaces(const TextPairs& interfaces, int state) {
    RigSetup setup;
    setup.interfaces = interfaces;
    WizardRig wizard(state, setup);
    wizard.play(std::vector<Step>(interfaces.size(), Key::down) + std::vector<Step>{"\t"});
    return wizard.image();
}

TEST(ListenerFrame, is_10_rows_high_and_27_columns_wide_with_one_interface) {
    EXPECT_PICTURE(with_interfaces({{"all", "0.0.0.0"}}, state_webadmin).region(7, 26, 10, 27), R"(
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

TEST(ListenerFrame, grows_with_the_widest_name_and_the_widest_address) {
    const ScreenImage frame =
        with_interfaces({{"all", "0.0.0.0"}, {"e", "192.168.100.200"}, {"enp0s31f6", "127.0.0.1"}},
                        state_smtp)
            .region(6, 20, 12, 40);
    EXPECT_PICTURE(frame, R"(
┌──────────────────────────────────────┐
│        Select SMTP Interface         │
├──────────────────────────────────────┤
│Interface:                     Port:  │
│  all       : 0.0.0.0          25     │
│  e         : 192.168.100.200  25     │
│$ enp0s31f6 : 127.0.0.1        25     │
│                                      │
│                                      │
│  Back                           OK   │
│                                      │
└──────────────────────────────────────┘
)");
    EXPECT_EQ(frame.cursor().position, (Position{6, 32 + 2}));
}

/// The smallest terminal and a host with so many interfaces, "all" not counted.
RigSetup small_terminal(int interfaces) {
    RigSetup setup{smallest, {{"all", "0.0.0.0"}}};
    for (int i = 0; i < interfaces; ++i)
        setup.interfaces.push_back({"eth" + std::to_string(i), "127.0.1." + std::to_string(i)});
    return setup;
}

TEST(ManyInterfaces, of_which_four_fit_into_the_smallest_terminal) {
    WizardRig wizard(state_webadmin, small_terminal(4));
    wizard.play({Key::down, Key::down, Key::down, Key::down, Key::tab});
    EXPECT_SCREEN(wizard.image(), "golden/WebAdmin_with_4_interfaces");
}

TEST(ManyInterfaces, show_what_fits_and_the_rest_on_a_larger_terminal) {
    WizardRig wizard(state_webadmin, small_terminal(29));
    wizard.play({"\t\t\t\t"});
    EXPECT_SCREEN(wizard.image(), "golden/WebAdmin_with_29_interfaces");
    wizard.play({Key::down, [&] { wizard.resize({48, 80}); }});
    EXPECT_TRUE(wizard.image().shows("eth28 : 127.0.1.28"));
    EXPECT_TRUE(wizard.image().shows("$ eth0"));
    wizard.play({[&] { wizard.resize(smallest); }, Key::up});
    EXPECT_SCREEN(wizard.image(), "golden/WebAdmin_with_29_interfaces");
}

TEST(ManyInterfaces, take_their_keys_unseen) {
    WizardRig wizard(state_webadmin, small_terminal(29));
    const LocalPort free_port;
    wizard.play(answer_listener(29, std::to_string(free_port.number())));
    EXPECT_EQ(screen_state, state_smtp);
    EXPECT_EQ(wizard_settings.webadmin_interface, 29);
    EXPECT_EQ(wizard_settings.webadmin_port, free_port.number());
    wizard.play({"\t\t\t", Key::space});
    EXPECT_EQ(screen_state, state_webadmin);
}

}  // namespace
