// Every screen in terminals of several sizes, with the focus on each of its controls in turn: in a
// terminal that had the size from the start, and after it was resized to it.

#include "tests/e2e/sizes.h"

#include <gtest/gtest.h>

#include <map>

#include "tests/e2e/focus.h"
#include "tests/e2e/frame.h"
#include "tests/e2e/stop_params.h"
#include "tests/e2e/wizard_run.h"
#include "tests/support/expect_screen.h"

namespace {

// The height by which a screen is put into the middle, which is not always its own.
int centring_rows(Stop stop) {
    if (facts_of(stop).port != nullptr)
        return 13;  // four rows of interfaces
    return stop == Stop::password ? 13 : 15;
}

void write(ScreenImage& screen, int row, const std::string& text) {
    for (size_t i = 0; i < text.size(); ++i) {
        Cell& cell = screen.cell(row, static_cast<int>(i));
        cell.text = text[i];
        cell.bold = true;
    }
}

// What is around the screens in a terminal of a size.
ScreenImage background(const Size& size) {
    constexpr int white = 7;
    constexpr int blue = 4;
    ScreenImage screen(size.rows, size.cols);
    for (int row = 0; row < size.rows; ++row) {
        for (int col = 0; col < size.cols; ++col)
            screen.cell(row, col) = {" ", white, blue, false};
    }
    write(screen, 0, "Welcome to the Teluma Config Utility (v6.0.0)");
    write(screen, 1, std::string(static_cast<size_t>(size.cols), '-'));
    write(screen, size.rows - 2, std::string(static_cast<size_t>(size.cols), '-'));
    write(screen, size.rows - 1, "Use TAB key to jump from one control to another");
    return screen;
}

// The frame of a screen as it should stand in a terminal of another size.
ScreenImage in_the_middle(const Frame& frame, Stop stop, const Size& size) {
    ScreenImage screen = background(size);
    const int top = (size.rows - centring_rows(stop)) / 2;
    const int left = (size.cols - frame.image.cols()) / 2;
    for (int row = 0; row < frame.image.rows(); ++row) {
        for (int col = 0; col < frame.image.cols(); ++col)
            screen.cell(top + row, left + col) = frame.image.cell(row, col);
    }
    const Cursor& cursor = frame.image.cursor();
    screen.setCursor({{top + cursor.position.row, left + cursor.position.col}, cursor.visible});
    return screen;
}

class EveryScreen : public testing::TestWithParam<Stop> {};

INSTANTIATE_TEST_SUITE_P(Screens, EveryScreen, testing::ValuesIn(every_stop()), stop_name);

TEST_P(EveryScreen, stands_in_the_middle_of_the_terminal_whatever_has_the_focus) {
    WizardRun usual;
    usual.walk(Stop::password, GetParam());
    for (const Size& size : terminal_sizes) {
        WizardRun wizard(size.rows, size.cols);
        wizard.walk(Stop::password, GetParam());
        for (int control = 0; control < facts_of(GetParam()).controls; ++control) {
            usual.moveFocus(GetParam(), control);
            usual.waitForKey();
            wizard.moveFocus(GetParam(), control);
            wizard.waitForKey();
            EXPECT_EQ(focus_on(wizard.image(), GetParam()), control);
            EXPECT_SAME_LOOK(in_the_middle(frame_on(usual.image()), GetParam(), size),
                             wizard.image());
        }
    }
}

TEST_P(EveryScreen, looks_after_resizes_as_in_a_terminal_that_always_had_the_size) {
    std::map<int, WizardRun> fresh;  // by columns
    for (const Size& size : terminal_sizes) {
        WizardRun& wizard = fresh.try_emplace(size.cols, size.rows, size.cols).first->second;
        wizard.walk(Stop::password, GetParam());
    }
    WizardRun resized;
    resized.walk(Stop::password, GetParam());
    for (int control = 0; control < facts_of(GetParam()).controls; ++control) {
        for (const Size& size : resize_round) {
            WizardRun& wizard = fresh.at(size.cols);
            wizard.moveFocus(GetParam(), control);
            wizard.waitForKey();
            resized.moveFocus(GetParam(), control);
            resized.resize(size.rows, size.cols);
            resized.waitForKey();
            EXPECT_SAME_LOOK(wizard.image(), resized.image());
        }
    }
}

}  // namespace
