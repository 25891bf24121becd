// What is common to the keys of all screens.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/screens/screen_views.h"
#include "tests/support/expect_screen.h"
#include "wizard/base/screen_state.h"

namespace {

std::vector<ScreenView> buttons() {
    std::vector<ScreenView> views;
    for (const ScreenView& view : all_views()) {
        if (view.control().is_button)
            views.push_back(view);
    }
    return views;
}

class ScreenButton : public testing::TestWithParam<ScreenView> {};

TEST_P(ScreenButton, ignores_all_keys_but_TAB_Enter_and_space) {
    const ScreenView& view = GetParam();
    WizardRig wizard(view.screen->state);
    answer_domain("example.com");
    screen_focus(view.screen->state) = view.focus();
    wizard.play({});
    const ScreenImage before = wizard.image();
    wizard.play({"x", Key::up, Key::down, Key::left, Key::right, Key::backspace, Key::del,
                 Key::home, Key::page_down});
    EXPECT_EQ(screen_state, view.screen->state);
    EXPECT_EQ(screen_focus(view.screen->state), view.focus());
    EXPECT_SAME_LOOK(before, wizard.image());
}

INSTANTIATE_TEST_SUITE_P(Screens, ScreenButton, testing::ValuesIn(buttons()), name_of_view);

}  // namespace
