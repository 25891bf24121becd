#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "screens/screen_table.h"
#include "tests/support/case_name.h"
#include "wizard/base/screen_state.h"
#include "wizard/base/wizard_settings.h"

namespace {

struct Services {
    unsigned char pop3;
    unsigned char imap;
    unsigned char webmail;
};

using States = std::vector<int>;

class ScreenMoves : public testing::Test {
  protected:
    ~ScreenMoves() override { enable({0, 0, 0}); }

    static void enable(const Services& services) {
        wizard_settings.service_enabled[service_pop3] = services.pop3;
        wizard_settings.service_enabled[service_imap] = services.imap;
        wizard_settings.service_enabled[service_webmail] = services.webmail;
    }
};

TEST_F(ScreenMoves, next_leads_from_each_screen_before_the_services_to_the_following_one) {
    EXPECT_EQ(next_screen_state(state_password), state_domain);
    EXPECT_EQ(next_screen_state(state_domain), state_aliases);
    EXPECT_EQ(next_screen_state(state_aliases), state_webadmin);
    EXPECT_EQ(next_screen_state(state_webadmin), state_smtp);
    EXPECT_EQ(next_screen_state(state_smtp), state_services);
    EXPECT_EQ(next_screen_state(state_relay), state_sendmail);
}

TEST_F(ScreenMoves, back_leads_from_each_screen_up_to_the_services_to_the_one_before) {
    EXPECT_EQ(previous_screen_state(state_domain), state_password);
    EXPECT_EQ(previous_screen_state(state_aliases), state_domain);
    EXPECT_EQ(previous_screen_state(state_webadmin), state_aliases);
    EXPECT_EQ(previous_screen_state(state_smtp), state_webadmin);
    EXPECT_EQ(previous_screen_state(state_services), state_smtp);
    EXPECT_EQ(previous_screen_state(state_sendmail), state_relay);
}

TEST_F(ScreenMoves, smtp_goes_on_to_the_services_and_back_to_webadmin_whatever_is_enabled) {
    for (const Services& services : {Services{0, 0, 0}, Services{1, 1, 1}}) {
        enable(services);
        EXPECT_EQ(next_listener_state(state_smtp), state_services);
        EXPECT_EQ(previous_listener_state(state_smtp), state_webadmin);
    }
}

TEST_F(ScreenMoves, the_screen_of_a_service_that_is_off_leads_on_from_there) {
    // As after a service was switched off while its screen was the one to return to.
    enable({1, 0, 1});
    EXPECT_EQ(next_listener_state(state_imap), state_webmail);
    EXPECT_EQ(previous_listener_state(state_imap), state_pop3);
}

struct Walk {
    const char* name;
    Services services;
    States visited;  // behind the services screen and before the sendmail screen
};

class WalkWith : public ScreenMoves, public testing::WithParamInterface<Walk> {
  protected:
    WalkWith() { enable(GetParam().services); }
};

TEST_P(WalkWith, forwards_visits_the_enabled_services_and_the_relay_screen) {
    States visited;
    for (int state = next_screen_state(state_services); state != state_sendmail;
         state = next_screen_state(state))
        visited.push_back(state);
    EXPECT_EQ(visited, GetParam().visited);
}

TEST_P(WalkWith, backwards_visits_the_same_screens_the_other_way_round) {
    States visited;
    for (int state = previous_screen_state(state_sendmail); state != state_services;
         state = previous_screen_state(state))
        visited.insert(visited.begin(), state);
    EXPECT_EQ(visited, GetParam().visited);
}

TEST_P(WalkWith, listener_moves_are_the_screens_moves) {
    EXPECT_EQ(next_listener_state(state_services), GetParam().visited.front());
    States before = {state_services};
    before.insert(before.end(), GetParam().visited.begin(), GetParam().visited.end() - 1);
    EXPECT_EQ(previous_listener_state(state_relay), before.back());
    EXPECT_EQ(previous_listener_state(state_pop3), state_services);
    EXPECT_EQ(next_listener_state(state_webmail), state_relay);
}

const Walk walks[] = {
    {"none", {0, 0, 0}, {state_relay}},
    {"pop3", {1, 0, 0}, {state_pop3, state_relay}},
    {"imap", {0, 1, 0}, {state_imap, state_relay}},
    {"webmail", {0, 0, 1}, {state_webmail, state_relay}},
    {"pop3_imap", {1, 1, 0}, {state_pop3, state_imap, state_relay}},
    {"pop3_webmail", {1, 0, 1}, {state_pop3, state_webmail, state_relay}},
    {"imap_webmail", {0, 1, 1}, {state_imap, state_webmail, state_relay}},
    {"all", {1, 1, 1}, {state_pop3, state_imap, state_webmail, state_relay}},
};

INSTANTIATE_TEST_SUITE_P(Services, WalkWith, testing::ValuesIn(walks), CaseName());

}  // namespace
