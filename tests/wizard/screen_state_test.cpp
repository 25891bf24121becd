#include "wizard/base/screen_state.h"

#include <gtest/gtest.h>

#include <set>

namespace {

TEST(ScreenState, the_screens_are_numbered_in_the_order_of_the_walk) {
    EXPECT_EQ(state_password, 0);
    EXPECT_EQ(state_domain, 1);
    EXPECT_EQ(state_aliases, 2);
    EXPECT_EQ(state_webadmin, 3);
    EXPECT_EQ(state_smtp, 4);
    EXPECT_EQ(state_services, 5);
    EXPECT_EQ(state_pop3, 6);
    EXPECT_EQ(state_imap, 7);
    EXPECT_EQ(state_webmail, 8);
    EXPECT_EQ(state_relay, 9);
    EXPECT_EQ(state_sendmail, 10);
}

TEST(ScreenState, dialogs_and_the_end_have_numbers_from_100_on) {
    EXPECT_EQ(state_message, 100);
    EXPECT_EQ(state_yes_no, 101);
    EXPECT_EQ(state_pending, 102);
    EXPECT_EQ(state_end, 103);
    EXPECT_EQ(state_retry_back, 104);
}

TEST(ScreenState, the_wizard_starts_at_the_password) {
    EXPECT_EQ(screen_state, state_password);
}

TEST(ScreenFocus, every_screen_has_its_own_and_it_starts_at_0) {
    std::set<const int*> places;
    for (const int state : {state_password, state_domain, state_aliases, state_webadmin, state_smtp,
                            state_services, state_relay, state_sendmail}) {
        EXPECT_EQ(screen_focus(state), 0) << state;
        places.insert(&screen_focus(state));
    }
    EXPECT_EQ(places.size(), 8U);
}

TEST(ScreenFocus, the_services_listeners_share_that_of_smtp) {
    for (const int state : {state_pop3, state_imap, state_webmail})
        EXPECT_EQ(&screen_focus(state), &screen_focus(state_smtp)) << state;
}

}  // namespace
