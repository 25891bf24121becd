// How every screen looks, with the focus on each of its controls, on terminals of several sizes,
// fresh and after changes of the size.

#include <gtest/gtest.h>

#include "tests/screens/moved_picture.h"
#include "tests/support/case_name.h"
#include "tests/support/expect_screen.h"
#include "tests/support/golden.h"

namespace {

class EachView : public testing::TestWithParam<ScreenView> {
  protected:
    const ScreenView& view = GetParam();
    const ScreenFacts& screen = *view.screen;

    // The other listeners' screens differ from that of WebAdmin by what their first picture shows.
    bool hasPicture() const {
        const bool is_later_listener =
            screen.state == state_smtp ||
            (screen.state >= state_pop3 && screen.state <= state_webmail);
        return view.tabs == 0 || !is_later_listener;
    }
};

TEST_P(EachView, looks_as_in_the_picture_however_the_focus_has_come_there) {
    const ScreenImage entered = drawn(view);
    WizardRig wizard(screen.state);
    enter({&screen, 0});
    wizard.play({view.keys()});
    EXPECT_EQ(screen_focus(screen.state), view.focus());
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
    const ScreenImage picture = drawn(view);
    const ScreenView next = {&screen, (view.tabs + 1) % screen.controlCount()};
    const ScreenImage after_tab = moved(drawn(next), screen, {60, 72});
    std::vector<ScreenImage> fresh;
    const Size sizes[] = {large, usual, smallest, large, odd, smallest, {60, 72}};
    for (const Size& size : sizes) fresh.push_back(moved(picture, screen, size));
    WizardRig wizard(screen.state);
    enter({&screen, 0});
    std::vector<Step> steps = {view.keys()};
    for (size_t i = 0; i < fresh.size(); ++i) {
        steps.emplace_back([&, i] {
            wizard.resize(sizes[i]);
            EXPECT_SAME_LOOK(fresh[i], wizard.image());
        });
    }
    steps.emplace_back(Key::tab);
    wizard.play(steps);
    EXPECT_EQ(screen_focus(screen.state), next.focus());
    EXPECT_SAME_LOOK(after_tab, wizard.image());
}

INSTANTIATE_TEST_SUITE_P(Screens, EachView, testing::ValuesIn(all_views()), CaseName());

class EachScreen : public testing::TestWithParam<ScreenFacts> {
  protected:
    const ScreenFacts& screen = GetParam();
    const ScreenView first = {&screen, 0};
};

TEST_P(EachScreen, has_the_size_of_the_terminal_that_was_resized_before_it_was_entered) {
    for (const Size& size : {smallest, large}) {
        const ScreenImage expected = moved(drawn(first), screen, size);
        WizardRig wizard(screen.state == state_password ? state_domain : state_password);
        wizard.play({[&] { wizard.resize(size); }});
        enter(first);
        wizard.play({});
        EXPECT_SAME_LOOK(expected, wizard.image());
    }
}

// Those of the services are the one of SMTP, moved; so is every screen on a large terminal.
TEST_P(EachScreen, looks_as_in_the_picture_on_the_smallest_terminal) {
    if (screen.state < state_pop3 || screen.state > state_webmail) {
        EXPECT_SCREEN(drawn(first, smallest), "golden/" + screen.name + "_at_20x72");
    }
    if (screen.state == state_password || screen.state == state_sendmail) {
        EXPECT_SCREEN(drawn(first, large), "golden/" + screen.name + "_at_60x200");
    }
}

INSTANTIATE_TEST_SUITE_P(Screens, EachScreen, testing::ValuesIn(all_screens()), CaseName());

// A screen that comes back after the terminal was resized under a dialog.
struct Interruption {
    std::string name;
    int state;
    std::vector<Step> open;   // what is typed on the screen to open the dialog
    std::vector<Step> close;  // and then to close it
};

void PrintTo(const Interruption& interruption, std::ostream* out) { *out << interruption.name; }

class ScreenUnderDialog : public testing::TestWithParam<Interruption> {};

TEST_P(ScreenUnderDialog, comes_back_in_its_new_place) {
    const auto& [name, state, open, close] = GetParam();
    const ScreenImage picture = [&state = state, keys = open + close] {
        WizardRig wizard(state);
        wizard.play(keys);
        return wizard.image();
    }();
    for (const Size& size : {smallest, large}) {
        const ScreenImage expected = moved(picture, all_screens()[state], size);
        WizardRig wizard(state);
        wizard.play(open + std::vector<Step>{[&wizard, size] { wizard.resize(size); }} + close);
        EXPECT_SAME_LOOK(expected, wizard.image());
    }
}

// Nothing listens at port 0.
INSTANTIATE_TEST_SUITE_P(
    Dialogs, ScreenUnderDialog,
    testing::Values(
        Interruption{"password", state_password, {"one\ttwo\t", Key::enter}, {Key::enter}},
        Interruption{"domain", state_domain, {retyped(""), "\t\t\t", Key::enter}, {Key::enter}},
        Interruption{
            "webadmin_error", state_webadmin, answer_listener(row_eth0, "x"), {Key::enter}},
        Interruption{"imap_error", state_imap, answer_listener(row_eth0, "x"), {Key::enter}},
        Interruption{
            "webadmin_question", state_webadmin, answer_listener(row_lo, "0"), {Key::enter}},
        Interruption{"imap_question", state_imap, answer_listener(row_lo, "0"), {Key::enter}}),
    CaseName());

}  // namespace
