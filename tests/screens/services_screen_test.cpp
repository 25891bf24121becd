#include <gtest/gtest.h>

#include <string>

#include "screens/screen_table.h"
#include "tests/screens/listener_rig.h"
#include "tests/support/local_port.h"
#include "wizard/base/screen_state.h"
#include "wizard/base/wizard_settings.h"

namespace {

/// The check boxes from the top: "xxx" where all are ticked.
std::string ticks_shown(WizardRig& wizard) {
    std::string ticks;
    for (const int row : {10, 11, 12})
        ticks += wizard.image().cell(row, 12).text;
    return ticks;
}

/// The services that the settings have enabled: POP3, IMAP, WebMail, 1 for one that is.
std::string services_stored() {
    std::string services;
    for (const unsigned char enabled : wizard_settings.service_enabled)
        services += std::to_string(enabled);
    return services;
}

/// Keys that bring the boxes, all of them ticked, to the wanted ones ("101").
std::vector<Step> tick(const std::string& wanted) {
    std::vector<Step> steps;
    for (const char service : wanted) {
        if (service == '0')
            steps.emplace_back(Key::space);
        steps.emplace_back(Key::down);
    }
    return steps;
}

TEST(ServicesScreen, all_boxes_are_ticked_at_first_while_no_service_is_enabled) {
    WizardRig wizard(state_services);
    wizard.play({});
    EXPECT_EQ(ticks_shown(wizard), "xxx");
    EXPECT_EQ(services_stored(), "000");
}

TEST(ServicesScreen, next_at_once_enables_all_three) {
    for (const Key press : {Key::enter, Key::space}) {
        WizardRig wizard(state_services);
        wizard.play({"\t", press});
        EXPECT_EQ(services_stored(), "111");
        EXPECT_EQ(screen_state, state_pop3);
        EXPECT_EQ(screen_focus(state_services), 0);
        EXPECT_FALSE(wizard.image().shows("Services Selection"));
    }
}

TEST(ServicesScreen, space_and_Enter_in_the_list_toggle_and_stay) {
    WizardRig wizard(state_services);
    wizard.play({Key::enter, Key::down, Key::space, Key::down, Key::down, Key::enter,
                 [&] { EXPECT_EQ(ticks_shown(wizard), "   "); }, Key::up, Key::up, Key::up,
                 Key::space});
    EXPECT_EQ(ticks_shown(wizard), "x  ");
    EXPECT_EQ(screen_state, state_services);
    EXPECT_EQ(screen_focus(state_services), 0);
}

TEST(ServicesScreen, nothing_is_stored_before_next) {
    WizardRig wizard(state_services);
    wizard.play({Key::space});
    EXPECT_EQ(services_stored(), "000");
}

struct Choice {
    const char* services;
    int next_state;
};

std::string name_of_choice(const testing::TestParamInfo<Choice>& info) {
    return info.param.services;
}

class ServicesChosen : public testing::TestWithParam<Choice> {};

TEST_P(ServicesChosen, are_stored_and_lead_to_the_first_of_their_screens) {
    WizardRig wizard(state_services);
    wizard.play(tick(GetParam().services) + std::vector<Step>{"\t", Key::enter});
    EXPECT_EQ(services_stored(), GetParam().services);
    EXPECT_EQ(screen_state, GetParam().next_state);
}

INSTANTIATE_TEST_SUITE_P(All, ServicesChosen,
                         testing::Values(Choice{"000", state_relay}, Choice{"001", state_webmail},
                                         Choice{"010", state_imap}, Choice{"011", state_imap},
                                         Choice{"100", state_pop3}, Choice{"101", state_pop3},
                                         Choice{"110", state_pop3}, Choice{"111", state_pop3}),
                         name_of_choice);

TEST(ServicesScreen,
     with_none_of_three_next_leads_to_the_relay_screen_and_back_from_there_returns) {
    WizardRig wizard(state_services);
    wizard.play(tick("000") + std::vector<Step>{"\t", Key::enter,
                                                [&] {
                                                    EXPECT_EQ(screen_state, state_relay);
                                                    EXPECT_EQ(screen_focus(state_relay), 0);
                                                },
                                                "\t\t", Key::enter});
    EXPECT_EQ(screen_state, state_services);
    EXPECT_EQ(screen_focus(state_services), 0);
    EXPECT_EQ(ticks_shown(wizard), "   ");
}

TEST(ServicesScreen, back_leads_to_the_list_of_the_SMTP_screen) {
    for (const Key press : {Key::enter, Key::space}) {
        WizardRig wizard(state_services);
        screen_focus(state_smtp) = 3;
        wizard.play({"\t\t", press});
        EXPECT_EQ(screen_state, state_smtp);
        EXPECT_EQ(screen_focus(state_smtp), 0);
        EXPECT_TRUE(wizard.image().shows("Select SMTP Interface"));
        EXPECT_FALSE(wizard.image().shows("Services Selection"));
    }
}

TEST(ServicesScreen, back_does_not_store_the_choices_but_the_boxes_keep_them) {
    WizardRig wizard(state_services);
    wizard.play({"\t", Key::enter});
    ASSERT_EQ(services_stored(), "111");
    screen_state = state_services;
    wizard.play(tick("010") + std::vector<Step>{"\t\t", Key::enter});
    EXPECT_EQ(services_stored(), "111");
    screen_state = state_services;
    wizard.play({});
    EXPECT_EQ(ticks_shown(wizard), " x ");
}

TEST(ServicesScreen, keeps_its_focus_on_back_until_the_user_returns_from_SMTP) {
    WizardRig wizard(state_services);
    const LocalPort free_port;
    wizard.play({"\t\t", Key::enter});
    wizard.play(answer_listener(row_all, std::to_string(free_port.number())));
    EXPECT_EQ(screen_state, state_services);
    EXPECT_EQ(screen_focus(state_services), 2);
}

TEST(ServicesWalk, with_POP3_and_WebMail_leaves_IMAP_out_in_both_directions) {
    WizardRig wizard(state_services);
    const LocalPort free_port;
    const std::vector<Step> ok = answer_listener(row_eth0, std::to_string(free_port.number()));
    const std::vector<Step> back = {"\t\t\t", Key::enter};
    const auto now = [](int state) {
        return std::vector<Step>{[state] { EXPECT_EQ(screen_state, state); }};
    };
    wizard.play(tick("101") + std::vector<Step>{"\t", Key::enter} + now(state_pop3) + ok +
                now(state_webmail) + back + now(state_pop3) + back + now(state_services) +
                std::vector<Step>{"\t", Key::enter} + now(state_pop3) +
                std::vector<Step>{"\t\t", Key::enter} + now(state_webmail) + ok);
    EXPECT_EQ(screen_state, state_relay);
}

}  // namespace
