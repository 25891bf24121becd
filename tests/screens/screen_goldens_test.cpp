// Every screen on a terminal of 24 lines by 80 columns, with the focus on each control in turn, as
// the TAB key brings it there.

#include <gtest/gtest.h>

#include "tests/screens/screen_views.h"
#include "tests/support/golden.h"
#include "wizard/base/screen_state.h"

namespace {

class ScreenInFocus : public testing::TestWithParam<ScreenView> {};

TEST_P(ScreenInFocus, the_screen_looks_as_in_the_picture) {
    const ScreenView& view = GetParam();
    WizardRig wizard(view.screen->state);
    answer_domain("example.com");
    wizard.play({view.keys()});
    EXPECT_EQ(screen_focus(view.screen->state), view.focus());
    EXPECT_SCREEN(wizard.image(), "golden/" + view.name());
}

TEST_P(ScreenInFocus, entering_the_screen_draws_what_the_keys_have_drawn) {
    const ScreenView& view = GetParam();
    EXPECT_SCREEN(drawn(view, {}), "golden/" + view.name());
}

INSTANTIATE_TEST_SUITE_P(Screens, ScreenInFocus, testing::ValuesIn(all_views()), name_of_view);

class FreshScreen : public testing::TestWithParam<ScreenView> {};

TEST_P(FreshScreen, TAB_from_the_last_control_leads_to_the_first) {
    const ScreenFacts& screen = *GetParam().screen;
    WizardRig wizard(screen.state);
    answer_domain("example.com");
    wizard.play({std::string(screen.controls.size(), '\t')});
    EXPECT_EQ(screen_focus(screen.state), 0);
    EXPECT_SCREEN(wizard.image(), "golden/" + GetParam().name());
}

INSTANTIATE_TEST_SUITE_P(Screens, FreshScreen, testing::ValuesIn(fresh_views()), name_of_view);

}  // namespace
