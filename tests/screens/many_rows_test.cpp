// Hosts with many interfaces and networks: with four of them everything fits into the smallest
// terminal, with as many as there can be the keys still work.

#include <gtest/gtest.h>

#include <string>

#include "tests/screens/listener_rig.h"
#include "tests/support/case_name.h"
#include "tests/support/golden.h"
#include "tests/support/local_port.h"
#include "wizard/base/screen_state.h"
#include "wizard/base/wizard_settings.h"

namespace {

/// The smallest terminal and a host with so many interfaces, "all" not counted, and networks.
RigSetup small_terminal(int interfaces, int networks) {
    RigSetup setup;
    setup.rows = 20;
    setup.cols = 72;
    setup.interfaces = {{"all", "0.0.0.0"}};
    for (int i = 0; i < interfaces; ++i)
        setup.interfaces.push_back({"eth" + std::to_string(i), "127.0.1." + std::to_string(i)});
    setup.networks.clear();
    for (int i = 0; i < networks; ++i)
        setup.networks.push_back({"10." + std::to_string(i) + ".0.0", "255.255.0.0"});
    return setup;
}

TEST(FourInterfaces, fit_into_the_smallest_terminal_on_the_WebAdmin_screen) {
    WizardRig wizard(state_webadmin, small_terminal(4, 4));
    wizard.play({Key::down, Key::down, Key::down, Key::down, Key::tab});
    EXPECT_SCREEN(wizard.image(), "golden/WebAdmin_with_4_interfaces");
}

TEST(FourInterfaces, fit_into_the_smallest_terminal_on_the_service_screen) {
    WizardRig wizard(state_webmail, small_terminal(4, 4));
    wizard.play({"\t\t"});
    EXPECT_SCREEN(wizard.image(), "golden/WebMail_with_4_interfaces");
}

TEST(FourInterfaces, fit_into_the_smallest_terminal_on_the_relay_screen) {
    WizardRig wizard(state_relay, small_terminal(4, 4));
    wizard.play({"\t"});
    EXPECT_SCREEN(wizard.image(), "golden/relay_with_4_networks");
}

class MostInterfaces : public testing::TestWithParam<ListenerFacts> {
  protected:
    const ListenerFacts& listener = GetParam();
    ListenerRig wizard{listener, small_terminal(29, 0)};
    LocalPort free_port;
};

TEST_P(MostInterfaces, show_what_fits_from_the_top) {
    wizard.play({});
    EXPECT_SCREEN(wizard.image(), "golden/" + listener.name + "_with_29_interfaces");
}

TEST_P(MostInterfaces, the_last_row_and_its_port_can_be_chosen_unseen) {
    wizard.play(answer_listener(29, std::to_string(free_port.number())));
    EXPECT_EQ(screen_state, listener.next_state);
    EXPECT_EQ(wizard.chosenInterface(), 29);
    EXPECT_EQ(wizard.chosenPort(), free_port.number());
}

TEST_P(MostInterfaces, TAB_goes_round_and_back_can_be_pressed_unseen) {
    wizard.play(
        {"\t\t\t\t", [&] { EXPECT_EQ(screen_focus(listener.state), 0); }, "\t\t\t", Key::space});
    EXPECT_EQ(screen_state, listener.previous_state);
}

TEST_P(MostInterfaces, a_larger_terminal_shows_the_whole_screen_after_a_resize) {
    wizard.play({Key::down, [&] { wizard.resize(48, 80); }});
    EXPECT_TRUE(wizard.image().shows("eth28 : 127.0.1.28"));
    EXPECT_TRUE(wizard.image().shows("$ eth0"));
    EXPECT_TRUE(wizard.image().shows("Back"));
    wizard.play({[&] { wizard.resize(20, 72); }});
    wizard.play({Key::up});
    EXPECT_SCREEN(wizard.image(), "golden/" + listener.name + "_with_29_interfaces");
}

INSTANTIATE_TEST_SUITE_P(Screens, MostInterfaces,
                         testing::Values(webadmin_facts(), service_facts().back()), CaseName());

class MostNetworks : public testing::Test {
  protected:
    WizardRig wizard{state_relay, small_terminal(0, 39)};
};

TEST_F(MostNetworks, show_what_fits_from_the_top) {
    wizard.play({});
    EXPECT_SCREEN(wizard.image(), "golden/relay_with_39_networks");
}

TEST_F(MostNetworks, the_last_one_can_be_unticked_unseen) {
    wizard.play(std::vector<Step>(38, Key::down) + std::vector<Step>{" \t", Key::enter});
    EXPECT_EQ(screen_state, state_sendmail);
    EXPECT_EQ(wizard_settings.relay_ticks[37], 1);
    EXPECT_EQ(wizard_settings.relay_ticks[38], 0);
}

TEST_F(MostNetworks, TAB_goes_round_and_back_can_be_pressed_unseen) {
    wizard.play({"\t\t\t", [&] { EXPECT_EQ(screen_focus(state_relay), 0); }, "\t\t", Key::space});
    EXPECT_EQ(screen_state, state_services);
}

}  // namespace
