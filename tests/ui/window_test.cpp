#include "ui/window.h"

#include <cstring>

#include "tests/ui/ui_test.h"

namespace {

using WindowTest = UiTest;

TEST_F(WindowTest, nothing_of_it_exists_before_create) {
    const Window window(root(), 3, 5, 7, 20);
    EXPECT_EQ(window.getCursesWindow(), nullptr);
    EXPECT_EQ(window.getHeight(), -1);
    EXPECT_EQ(window.getWidth(), -1);
    EXPECT_EQ(panels_shown(), 0);
}

TEST_F(WindowTest, keeps_the_geometry_that_it_was_constructed_with) {
    const Window window(root(), 3, 5, 7, 20);
    EXPECT_EQ(window.getRow(), 3);
    EXPECT_EQ(window.getCol(), 5);
    EXPECT_EQ(window.clientHeight(), 7);
    EXPECT_EQ(window.clientWidth(), 20);
}

TEST_F(WindowTest, create_makes_a_curses_window_of_its_size_at_its_place) {
    Window window(root(), 3, 5, 7, 20);
    window.create();
    EXPECT_EQ(window.getHeight(), 7);
    EXPECT_EQ(window.getWidth(), 20);
    EXPECT_EQ(getbegy(window.getCursesWindow()), 3);
    EXPECT_EQ(getbegx(window.getCursesWindow()), 5);
}

TEST_F(WindowTest, stands_relative_to_its_parent) {
    Window frame(root(), 3, 5, 7, 20);
    frame.create();
    Window widget(&frame, 2, 4, 1, 6);
    widget.create();
    EXPECT_EQ(getbegy(widget.getCursesWindow()), 5);
    EXPECT_EQ(getbegx(widget.getCursesWindow()), 9);
}

TEST_F(WindowTest, a_parent_without_a_curses_window_counts_as_standing_at_minus_one) {
    Window frame(root(), 3, 5, 7, 20);
    Window widget(&frame, 2, 4, 1, 6);
    widget.create();
    EXPECT_EQ(getbegy(widget.getCursesWindow()), 1);
    EXPECT_EQ(getbegx(widget.getCursesWindow()), 3);
}

TEST_F(WindowTest, without_a_parent_stands_relative_to_minus_one_too) {
    Window window(nullptr, 2, 4, 1, 6);
    window.create();
    EXPECT_EQ(getbegy(window.getCursesWindow()), 1);
    EXPECT_EQ(getbegx(window.getCursesWindow()), 3);
}

TEST_F(WindowTest, the_root_takes_place_and_size_from_the_standard_screen_and_has_no_panel) {
    const Window window(stdscr, nullptr);
    EXPECT_EQ(window.getCursesWindow(), stdscr);
    EXPECT_EQ(window.getRow(), 0);
    EXPECT_EQ(window.getCol(), 0);
    EXPECT_EQ(window.getHeight(), 24);
    EXPECT_EQ(window.getWidth(), 80);
    EXPECT_EQ(window.clientHeight(), 24);
    EXPECT_EQ(window.clientWidth(), 80);
    EXPECT_EQ(panels_shown(), 0);
}

TEST_F(WindowTest, a_wrapped_window_has_that_windows_place_and_size) {
    WINDOW* wrapped = newwin(4, 9, 2, 6);
    {
        const Window window(wrapped, nullptr);
        EXPECT_EQ(window.getRow(), 2);
        EXPECT_EQ(window.getCol(), 6);
        EXPECT_EQ(window.clientHeight(), 4);
        EXPECT_EQ(window.clientWidth(), 9);
    }
    delwin(wrapped);
}

TEST_F(WindowTest, a_wrapped_null_handle_gives_minus_one_four_times) {
    const Window window(nullptr, nullptr);
    EXPECT_EQ(window.getRow(), -1);
    EXPECT_EQ(window.getCol(), -1);
    EXPECT_EQ(window.clientHeight(), -1);
    EXPECT_EQ(window.clientWidth(), -1);
    EXPECT_EQ(window.getHeight(), -1);
    EXPECT_EQ(window.getWidth(), -1);
}

TEST_F(WindowTest, the_standard_screen_can_be_used_after_the_root_has_gone) {
    { const Window window(stdscr, nullptr); }
    mvaddstr(0, 0, "still here");
    refresh();
    EXPECT_TRUE(terminal.image().shows("still here"));
}

TEST_F(WindowTest, set_size_and_set_position_decide_what_create_makes) {
    Window window(root(), 0, 0, 1, 1);
    window.setSize(4, 9);
    window.setPosition(2, 6);
    window.create();
    EXPECT_EQ(window.getHeight(), 4);
    EXPECT_EQ(window.getWidth(), 9);
    EXPECT_EQ(getbegy(window.getCursesWindow()), 2);
    EXPECT_EQ(getbegx(window.getCursesWindow()), 6);
}

TEST_F(WindowTest, set_size_and_set_position_only_store) {
    Window window(root(), 3, 5, 7, 20);
    window.create();
    window.setSize(4, 9);
    window.setPosition(2, 6);
    EXPECT_EQ(window.getHeight(), 7);
    EXPECT_EQ(window.getWidth(), 20);
    EXPECT_EQ(getbegy(window.getCursesWindow()), 3);
    EXPECT_EQ(getbegx(window.getCursesWindow()), 5);
    EXPECT_EQ(window.clientHeight(), 4);
    EXPECT_EQ(window.clientWidth(), 9);
    EXPECT_EQ(window.getRow(), 2);
    EXPECT_EQ(window.getCol(), 6);
}

TEST_F(WindowTest, a_box_leaves_two_lines_and_two_columns_less_inside) {
    Window window(root(), 0, 0, 10, 30);
    window.setBoxed();
    EXPECT_EQ(window.clientHeight(), 8);
    EXPECT_EQ(window.clientWidth(), 28);
}

TEST_F(WindowTest, a_title_leaves_four_lines_and_two_columns_less_inside) {
    Window window(root(), 0, 0, 10, 30);
    window.setTitle("Title", 2);
    EXPECT_EQ(window.clientHeight(), 6);
    EXPECT_EQ(window.clientWidth(), 28);
}

TEST_F(WindowTest, a_box_with_a_title_leaves_as_much_as_a_box) {
    Window window(root(), 0, 0, 10, 30);
    window.setBoxed();
    window.setTitle("Title", 2);
    EXPECT_EQ(window.clientHeight(), 8);
    EXPECT_EQ(window.clientWidth(), 28);
}

TEST_F(WindowTest, keeps_a_copy_of_its_title) {
    char title[] = "First";
    Window window(root(), 0, 0, 4, 20);
    window.setTitle(title, 2);
    std::strcpy(title, "wrong");
    window.create();
    window.draw();
    EXPECT_TRUE(shown().shows("First"));
}

// The first copy would be a leak.
TEST_F(WindowTest, a_second_title_takes_the_place_of_the_first) {
    Window window(root(), 0, 0, 4, 20);
    window.setTitle("First", 2);
    window.setTitle("Second", 3);
    window.create();
    window.draw();
    EXPECT_FALSE(shown().shows("First"));
    EXPECT_TRUE(shown().shows("Second"));
    EXPECT_EQ(shown().cell(1, 7).background, COLOR_RED);
}

TEST_F(WindowTest, touch_marks_every_line_of_it_and_of_all_its_ancestors) {
    Window frame(root(), 3, 5, 7, 20);
    frame.create();
    Window widget(&frame, 2, 4, 2, 6);
    widget.create();
    shown();
    ASSERT_FALSE(is_wintouched(widget.getCursesWindow()));
    ASSERT_FALSE(is_wintouched(frame.getCursesWindow()));
    ASSERT_FALSE(is_wintouched(stdscr));
    widget.touch();
    for (int line = 0; line < 2; ++line)
        EXPECT_TRUE(is_linetouched(widget.getCursesWindow(), line)) << line;
    for (int line = 0; line < 7; ++line)
        EXPECT_TRUE(is_linetouched(frame.getCursesWindow(), line)) << line;
    for (int line = 0; line < 24; ++line)
        EXPECT_TRUE(is_linetouched(stdscr, line)) << line;
}

TEST_F(WindowTest, touch_does_not_mark_what_stands_in_it) {
    Window frame(root(), 3, 5, 7, 20);
    frame.create();
    Window widget(&frame, 2, 4, 2, 6);
    widget.create();
    shown();
    frame.touch();
    EXPECT_FALSE(is_wintouched(widget.getCursesWindow()));
}

TEST_F(WindowTest, refresh_shows_the_window_and_nothing_else) {
    Window one(root(), 3, 5, 1, 10);
    Window other(root(), 4, 5, 1, 10);
    one.create();
    other.create();
    mvwaddstr(one.getCursesWindow(), 0, 0, "one");
    mvwaddstr(other.getCursesWindow(), 0, 0, "other");
    one.refresh();
    EXPECT_TRUE(terminal.image().shows("one"));
    EXPECT_FALSE(terminal.image().shows("other"));
}

}  // namespace
