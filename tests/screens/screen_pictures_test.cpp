// How every screen looks, with the focus on each of its controls, on terminals of several sizes,
// fresh and after changes of the size.

#include <gtest/gtest.h>

#include "tests/screens/screen_facts.h"
#include "tests/support/case_name.h"
#include "tests/support/expect_screen.h"
#include "tests/support/golden.h"
#include "ui/message_dialogs.h"

namespace {

class EachView : public testing::TestWithParam<ScreenView> {
  protected:
    const ScreenView& view = GetParam();
    const ScreenFacts& screen = *view.screen;

    // The other listeners' screens differ from that of WebAdmin by what their first picture shows.
    bool hasPicture() const {
        const bool is_listener = screen.controls[1].name == "port";
        return view.tabs == 0 || !is_listener || screen.state == state_webadmin;
    }
};

TEST_P(EachView, looks_as_in_the_picture_however_the_focus_has_come_there) {
    const ScreenImage entered = drawn(view);
    WizardRig wizard(screen.state);
    enter({&screen, 0});
    wizard.play({view.keys()});
    EXPECT_EQ(screen_focus(screen.state), view.control().focus);
    const ScreenImage image = wizard.image();
    if (hasPicture()) {
        EXPECT_SCREEN(image, "golden/" + view.name);
    }
    EXPECT_SAME_LOOK(image, entered);

    wizard.play({std::string(screen.controls.size(), '\t')});
    EXPECT_SAME_LOOK(image, wizard.image());
}

TEST_P(EachView, of_a_button_ignores_all_keys_but_TAB_Enter_and_space) {
    if (!view.control().is_button) return;
    const ScreenImage before = drawn(view);
    WizardRig wizard(screen.state);
    enter(view);
    wizard.play({"x", Key::up, Key::down, Key::left, Key::right, Key::backspace, Key::del,
                 Key::home, Key::page_down});
    EXPECT_EQ(screen_state, screen.state);
    EXPECT_SAME_LOOK(before, wizard.image());
}

TEST_P(EachView, stands_in_the_middle_of_terminals_of_all_sizes) {
    const ScreenImage picture = drawn(view);
    for (const Size& size : {smallest, large, odd})
        EXPECT_SAME_LOOK(moved(picture, screen, size), drawn(view, size));
}

TEST_P(EachView, looks_fresh_after_resizes_and_takes_keys) {
    const std::vector<Size> sizes = {large, usual, smallest, large, odd, smallest, {60, 72}};
    const ScreenImage picture = drawn(view);
    const ScreenView next = {&screen, (view.tabs + 1) % screen.controlCount()};
    const ScreenImage after_tab = moved(drawn(next), screen, sizes.back());
    std::vector<ScreenImage> fresh;
    for (const Size& size : sizes) fresh.push_back(moved(picture, screen, size));
    WizardRig wizard(screen.state);
    enter({&screen, 0});
    const auto expect_fresh_after_resizes = [&] {
        for (size_t i = 0; i < sizes.size(); ++i) {
            wizard.resize(sizes[i]);
            EXPECT_SAME_LOOK(fresh[i], wizard.image());
        }
    };
    wizard.play({view.keys(), expect_fresh_after_resizes, Key::tab});
    EXPECT_EQ(screen_focus(screen.state), next.control().focus);
    EXPECT_SAME_LOOK(after_tab, wizard.image());
}

TEST_P(EachView, comes_back_in_the_middle_of_a_terminal_that_was_resized_meanwhile) {
    const ScreenImage picture = drawn(view);
    for (const Size& size : {smallest, large}) {
        const ScreenImage expected = moved(picture, screen, size);
        WizardRig wizard(screen.state);
        enter(view);
        wizard.play({});
        wizard.playWith([] { showMessage("Passwords do not match!", "Error!"); },
                        {[&] { wizard.resize(size); }, Key::enter});
        wizard.play({});
        EXPECT_SAME_LOOK(expected, wizard.image());
    }
}

INSTANTIATE_TEST_SUITE_P(Screens, EachView, testing::ValuesIn(all_views()), CaseName());

}  // namespace
