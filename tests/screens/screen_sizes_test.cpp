// Every screen on the smallest terminal, on a large one and on one of odd measures, fresh and after
// a change of the terminal's size.

#include <gtest/gtest.h>

#include <string>

#include "tests/screens/moved_picture.h"
#include "tests/screens/screen_views.h"
#include "tests/support/case_name.h"
#include "tests/support/expect_screen.h"
#include "tests/support/golden.h"
#include "wizard/base/screen_state.h"

namespace {

struct Size {
    int rows;
    int cols;
};

constexpr Size smallest = {20, 72};
constexpr Size usual = {24, 80};
constexpr Size large = {60, 200};
// Of which a frame that leaves a row over elsewhere leaves none, and the other way round.
constexpr Size odd = {25, 81};

RigSetup terminal_of(const Size& size) {
    RigSetup setup;
    setup.rows = size.rows;
    setup.cols = size.cols;
    return setup;
}

Position place_of_frame(const ScreenFacts& screen, const Size& size) {
    return {(size.rows - screen.centring_rows) / 2, (size.cols - screen.cols) / 2};
}

/// The picture of the usual size, moved to where another size puts it.
ScreenImage moved(const ScreenView& view, const Size& size) {
    const ScreenFacts& screen = *view.screen;
    const Position from = place_of_frame(screen, usual);
    const Position to = place_of_frame(screen, size);
    const ScreenImage part =
        drawn(view, terminal_of(usual)).region(from.row, from.col, screen.rows, screen.cols);
    return put_on(background(size.rows, size.cols), part, to.row, to.col);
}

class SizedScreen : public testing::TestWithParam<ScreenFacts> {
  protected:
    const ScreenFacts& screen = GetParam();
};

TEST_P(SizedScreen, stands_in_the_middle_of_the_smallest_terminal) {
    for (const ScreenView& view : views_of(screen)) {
        SCOPED_TRACE(view.name());
        EXPECT_SAME_LOOK(moved(view, smallest), drawn(view, terminal_of(smallest)));
    }
}

TEST_P(SizedScreen, stands_in_the_middle_of_a_large_terminal) {
    for (const ScreenView& view : views_of(screen)) {
        SCOPED_TRACE(view.name());
        EXPECT_SAME_LOOK(moved(view, large), drawn(view, terminal_of(large)));
    }
}

TEST_P(SizedScreen, stands_in_the_middle_of_a_terminal_with_odd_numbers_of_rows_and_columns) {
    for (const ScreenView& view : views_of(screen)) {
        SCOPED_TRACE(view.name());
        EXPECT_SAME_LOOK(moved(view, odd), drawn(view, terminal_of(odd)));
    }
}

void expect_fresh_look_after_resizes(const ScreenView& view) {
    SCOPED_TRACE(view.name());
    std::vector<Step> steps = {view.keys()};
    WizardRig* wizard = nullptr;
    for (const Size& size : {large, usual, smallest, large, smallest, usual}) {
        const ScreenImage fresh = moved(view, size);
        steps.emplace_back([size, fresh, &wizard] {
            wizard->resize(size.rows, size.cols);
            EXPECT_SAME_LOOK(fresh, wizard->image());
            EXPECT_SAME_LOOK(fresh, wizard->terminalImage());
        });
    }
    WizardRig rig(view.screen->state);
    wizard = &rig;
    answer_domain("example.com");
    rig.play(steps);
}

TEST_P(SizedScreen, looks_fresh_after_resizes_in_both_directions) {
    for (const ScreenView& view : views_of(screen))
        expect_fresh_look_after_resizes(view);
}

TEST_P(SizedScreen, takes_keys_after_a_resize) {
    for (const ScreenView& view : views_of(screen)) {
        SCOPED_TRACE(view.name());
        const ScreenView next = {&screen, (view.tabs + 1) % screen.control_count()};
        const ScreenImage expected = moved(next, large);
        WizardRig wizard(screen.state);
        answer_domain("example.com");
        wizard.play({view.keys(), [&] { wizard.resize(large.rows, large.cols); }, Key::tab});
        EXPECT_EQ(screen_focus(screen.state), next.focus());
        EXPECT_SAME_LOOK(expected, wizard.image());
    }
}

INSTANTIATE_TEST_SUITE_P(Screens, SizedScreen, testing::ValuesIn(all_screens()), CaseName());

class PicturedScreen : public testing::TestWithParam<ScreenView> {};

TEST_P(PicturedScreen, looks_as_in_the_picture_on_the_smallest_terminal) {
    EXPECT_SCREEN(drawn(GetParam(), terminal_of(smallest)),
                  "golden/" + GetParam().screen->name + "_at_20x72");
}

TEST_P(PicturedScreen, looks_as_in_the_picture_on_a_large_terminal) {
    EXPECT_SCREEN(drawn(GetParam(), terminal_of(large)),
                  "golden/" + GetParam().screen->name + "_at_60x200");
}

INSTANTIATE_TEST_SUITE_P(Screens, PicturedScreen,
                         testing::ValuesIn(fresh_views_of_different_screens()), name_of_view);

}  // namespace
