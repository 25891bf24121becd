// The table of the screens: what is built when, what is released, and where they lead.

#include "screens/screen_table.h"

#include <gtest/gtest.h>
#include <panel.h>

#include "screens/screen.h"
#include "tests/screens/screen_facts.h"
#include "ui/main_window.h"
#include "ui/message_dialogs.h"
#include "wizard/base/host_facts.h"
#include "wizard/ending.h"

namespace {

static_assert(state_message == 100 && state_yes_no == 101 && state_pending == 102 &&
              state_end == 103 && state_retry_back == 104);

std::vector<int> states_built() {
    std::vector<int> states;
    for (int state = 0; state < screen_count; ++state) {
        if (built_screens[state] != nullptr) states.push_back(state);
    }
    return states;
}

TEST(ScreenTable, keeps_all_screens_but_the_aliases_after_a_visit) {
    WizardRig wizard(state_domain);
    wizard.play({"\t\tpw\t", Key::enter, [] { EXPECT_EQ(states_built().at(2), 2); }, "\t",
                 Key::enter, "\t\t\t", Key::enter, "\t\t", Key::enter,
                 [] {
                     EXPECT_EQ(states_built(), (std::vector<int>{0, 1, 3}));
                 }});
    EXPECT_EQ(screen_state, state_domain);
}

TEST(ReleaseScreens, leaves_nothing_of_screens_and_boxes_wherever_the_wizard_is_and_twice) {
    for (const ScreenFacts& screen : all_screens()) {
        WizardRig wizard(screen.state);
        wizard.playWith([] { run_screens(); }, {});
        showPending("Please wait!", "Operation pending!");
        for (int times = 0; times < 2; ++times) {
            release_screens();
            EXPECT_TRUE(states_built().empty());
            EXPECT_EQ(main_window, nullptr);
            EXPECT_EQ(interface_table, nullptr);
            EXPECT_EQ(relay_network_list, nullptr);
            EXPECT_EQ(panel_above(nullptr), nullptr);
        }
    }
}

TEST(ScreenFocus, is_one_for_SMTP_POP3_IMAP_and_WebMail) {
    for (const int state : {state_pop3, state_imap, state_webmail})
        EXPECT_EQ(&screen_focus(state), &screen_focus(state_smtp));
}

TEST(Walk, leads_through_all_screens_but_the_listeners_of_services_that_are_off) {
    const std::vector<int> enabled[] = {{}, {6}, {7}, {8}, {6, 7}, {6, 8}, {7, 8}, {6, 7, 8}};
    for (const std::vector<int>& listeners : enabled) {
        wizard_settings = {};
        std::vector<int> walk = {0, 1, 2, 3, 4, 5};
        for (const int state : listeners) {
            wizard_settings.service_enabled[state - state_pop3] = 1;
            walk.push_back(state);
        }
        walk.insert(walk.end(), {9, 10});
        for (size_t i = 1; i < walk.size(); ++i) {
            EXPECT_EQ(next_listener_state(walk[i - 1]), walk[i]);
            EXPECT_EQ(previous_listener_state(walk[i]), walk[i - 1]);
        }
    }
    wizard_settings = {};
}

}  // namespace
