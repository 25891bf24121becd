#include <gtest/gtest.h>
#include <panel.h>

#include "screens/screen.h"
#include "screens/screen_table.h"
#include "tests/screens/moved_picture.h"
#include "tests/screens/screen_views.h"
#include "tests/support/expect_screen.h"
#include "wizard/base/screen_state.h"

namespace {

TEST(ScreenList, creates_the_screens_that_exist_from_the_start_hidden) {
    const ScreenImage nothing = background(24, 80);
    WizardRig wizard(state_password);
    curs_set(0);
    update_panels();
    doupdate();
    EXPECT_SAME_LOOK(nothing, wizard.image());
    for (const int state :
         {state_password, state_domain, state_services, state_relay, state_sendmail})
        EXPECT_NE(built_screens[state], nullptr) << state;
    for (const int state : {state_aliases, state_webadmin, state_smtp})
        EXPECT_EQ(built_screens[state], nullptr) << state;
}

TEST(ScreenList, releases_every_screen_and_does_nothing_when_asked_again) {
    WizardRig wizard(state_password);
    for (const ScreenFacts& screen : all_screens()) {
        screen_state = screen.state;
        wizard.play({});
    }
    destroy_screens();
    destroy_screens();
    for (const ScreenFacts& screen : all_screens()) {
        EXPECT_EQ(built_screens[screen.state], nullptr) << screen.name;
    }
    EXPECT_EQ(panel_above(nullptr), nullptr);
}

TEST(ScreenList, screens_can_be_built_again_after_their_release) {
    const ScreenImage first = drawn(fresh_views().front(), {});
    WizardRig wizard(state_password);
    destroy_screens();
    create_screens();
    wizard.play({});
    EXPECT_SAME_LOOK(first, wizard.image());
}

}  // namespace
