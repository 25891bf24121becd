#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "screens/screen_table.h"
#include "tests/screens/wizard_rig.h"
#include "tests/support/expect_screen.h"
#include "tests/support/golden.h"
#include "wizard/base/screen_state.h"
#include "wizard/base/wizard_settings.h"

namespace {

/// The check boxes of three networks from the top: "xxx" where all are ticked.
std::string ticks_shown(WizardRig& wizard) {
    std::string ticks;
    for (const int row : {9, 10, 11})
        ticks += wizard.image().cell(row, 12).text;
    return ticks;
}

/// The first three ticks in the settings.
std::string ticks_stored() {
    std::string ticks;
    for (int network = 0; network < 3; ++network)
        ticks += std::to_string(wizard_settings.relay_ticks[network]);
    return ticks;
}

TEST(RelayScreen, ticks_every_network_when_it_is_built) {
    WizardRig wizard(state_relay);
    EXPECT_EQ(ticks_stored(), "111");
    EXPECT_EQ(wizard_settings.relay_ticks[3], 0);
    wizard.play({});
    EXPECT_EQ(ticks_shown(wizard), "xxx");
}

TEST(RelayScreen, space_and_Enter_in_the_list_toggle_and_stay) {
    WizardRig wizard(state_relay);
    wizard.play({Key::enter, [&] { EXPECT_EQ(ticks_shown(wizard), " xx"); }, Key::down, Key::down,
                 Key::down, Key::space, [&] { EXPECT_EQ(ticks_shown(wizard), " x "); }, Key::up,
                 Key::space});
    EXPECT_EQ(ticks_shown(wizard), "   ");
    EXPECT_EQ(screen_state, state_relay);
    EXPECT_EQ(screen_focus(state_relay), 0);
}

TEST(RelayScreen, next_leads_to_the_sendmail_screen_with_the_ticks_stored) {
    for (const Key press : {Key::enter, Key::space}) {
        WizardRig wizard(state_relay);
        wizard.play({Key::down, Key::space, "\t", press});
        EXPECT_EQ(ticks_stored(), "101");
        EXPECT_EQ(screen_state, state_sendmail);
        EXPECT_EQ(screen_focus(state_relay), 0);
        EXPECT_TRUE(wizard.image().shows("Sendmail Wrapper Configuration"));
        EXPECT_FALSE(wizard.image().shows("Relay Configuration"));
    }
}

TEST(RelayScreen, back_leads_to_the_screen_before_with_the_ticks_stored) {
    for (const Key press : {Key::enter, Key::space}) {
        WizardRig wizard(state_relay);
        wizard.play({Key::space, "\t\t", press});
        EXPECT_EQ(ticks_stored(), "011");
        EXPECT_EQ(screen_state, state_services);
        EXPECT_EQ(screen_focus(state_relay), 0);
        EXPECT_FALSE(wizard.image().shows("Relay Configuration"));
    }
}

TEST(RelayScreen, back_leads_to_the_last_enabled_service) {
    const struct {
        unsigned char enabled[3];
        int state;
    } cases[] = {{{1, 0, 0}, state_pop3},
                 {{0, 1, 0}, state_imap},
                 {{1, 1, 0}, state_imap},
                 {{1, 0, 1}, state_webmail},
                 {{0, 0, 0}, state_services}};
    for (const auto& each : cases) {
        WizardRig wizard(state_relay);
        std::copy(std::begin(each.enabled), std::end(each.enabled),
                  std::begin(wizard_settings.service_enabled));
        wizard.play({"\t\t", Key::enter});
        EXPECT_EQ(screen_state, each.state);
    }
}

TEST(RelayScreen, shows_the_ticks_again_on_a_later_visit) {
    WizardRig wizard(state_relay);
    wizard.play({Key::down, Key::space, "\t", Key::enter,  // to the sendmail screen
                 "\t\t", Key::enter});                     // and back
    EXPECT_EQ(screen_state, state_relay);
    EXPECT_EQ(screen_focus(state_relay), 0);
    EXPECT_EQ(ticks_shown(wizard), "x x");
}

class RelayScreenWithoutNetworks : public testing::Test {
  protected:
    static RigSetup noNetworks() {
        RigSetup setup;
        setup.networks.clear();
        return setup;
    }

    WizardRig wizard{state_relay, noNetworks()};
};

TEST_F(RelayScreenWithoutNetworks, shows_the_question_and_the_buttons_alone) {
    wizard.play({});
    EXPECT_SCREEN(wizard.image(), "golden/relay_without_networks");
}

TEST_F(RelayScreenWithoutNetworks, keys_in_the_empty_list_do_nothing) {
    wizard.play({});
    const ScreenImage before = wizard.image();
    wizard.play({Key::space, Key::enter, Key::down, Key::up});
    EXPECT_SAME_LOOK(before, wizard.image());
    EXPECT_EQ(screen_state, state_relay);
    wizard.play({"\t", Key::enter});
    EXPECT_EQ(screen_state, state_sendmail);
    EXPECT_EQ(ticks_stored(), "000");
}

}  // namespace
