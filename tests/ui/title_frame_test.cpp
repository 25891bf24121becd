#include <string>

#include "tests/ui/ui_test.h"
#include "ui/window.h"

namespace {

/// Draws one window in the upper left corner of the terminal.
class FrameTest : public UiTest {
  protected:
    ScreenImage draw(Window& window) {
        window.create();
        window.draw();
        return shown(0, 0, window.getHeight(), window.getWidth());
    }
};

TEST_F(FrameTest, a_plain_window_is_an_empty_area_of_its_background) {
    Window window(root(), 0, 0, 2, 6);
    window.setColors(2, 1, 0);
    const ScreenImage image = draw(window);
    EXPECT_PICTURE(image, "\n\n\n");
    EXPECT_COLOURS(image, R"(
bbbbbb
bbbbbb
)");
}

TEST_F(FrameTest, text_in_it_has_the_foreground_pair) {
    Window window(root(), 0, 0, 1, 6);
    window.setColors(2, 1, 0);
    draw(window);
    mvwaddstr(window.getCursesWindow(), 0, 0, "text");
    EXPECT_COLOURS(shown(0, 0, 1, 6), "kkkkbb\n");
}

TEST_F(FrameTest, a_bold_background_makes_its_text_bold) {
    Window window(root(), 0, 0, 1, 6);
    window.setColors(2, 2, 1);
    draw(window);
    mvwaddstr(window.getCursesWindow(), 0, 0, "text");
    EXPECT_COLOURS(shown(0, 0, 1, 6), "BBBBbb\n");
}

TEST_F(FrameTest, colours_that_were_never_set_are_the_terminals) {
    Window window(root(), 0, 0, 1, 6);
    draw(window);
    mvwaddstr(window.getCursesWindow(), 0, 0, "text");
    const ScreenImage image = shown();
    const Cell& untouched = image.cell(10, 10);
    EXPECT_EQ(image.cell(0, 0).background, untouched.background);
    EXPECT_EQ(image.cell(0, 0).foreground, untouched.foreground);
    EXPECT_FALSE(image.cell(0, 0).bold);
}

TEST_F(FrameTest, drawing_again_recolours_what_stands_in_the_window) {
    Window window(root(), 0, 0, 1, 6);
    window.setColors(2, 2, 0);
    draw(window);
    mvwaddstr(window.getCursesWindow(), 0, 0, "text");
    window.setColors(2, 2, 1);
    window.draw();
    EXPECT_COLOURS(shown(0, 0, 1, 6), "BBBBbb\n");
}

TEST_F(FrameTest, a_box_is_a_line_around_the_window) {
    Window window(root(), 0, 0, 3, 6);
    window.setBoxed();
    window.setColors(2, 2, 0);
    const ScreenImage image = draw(window);
    EXPECT_PICTURE(image, R"(
┌────┐
│    │
└────┘
)");
    EXPECT_COLOURS(image, R"(
bbbbbb
bbbbbb
bbbbbb
)");
}

TEST_F(FrameTest, a_title_stands_in_a_frame_over_a_line_that_joins_it) {
    Window window(root(), 0, 0, 6, 13);
    window.setTitle("Title", 2);
    window.setColors(2, 2, 1);
    const ScreenImage image = draw(window);
    EXPECT_PICTURE(image, R"(
┌───────────┐
│   Title   │
├───────────┤
│           │
│           │
└───────────┘
)");
    EXPECT_COLOURS(image, R"(
BBBBBBBBBBBBB
BbbbBBBBBbbbB
BBBBBBBBBBBBB
BbbbbbbbbbbbB
BbbbbbbbbbbbB
BBBBBBBBBBBBB
)");
}

TEST_F(FrameTest, frame_and_title_are_bold_in_the_title_pair_and_the_line_under_it_is_not) {
    Window window(root(), 0, 0, 5, 9);
    window.setTitle("abc", 3);
    window.setColors(2, 1, 0);
    EXPECT_COLOURS(draw(window), R"(
RRRRRRRRR
RrrRRRrrR
kkkkkkkkk
RbbbbbbbR
RRRRRRRRR
)");
}

TEST_F(FrameTest, what_a_title_leaves_over_to_its_sides_goes_to_the_right) {
    Window window(root(), 0, 0, 4, 10);
    window.setTitle("abc", 2);
    EXPECT_PICTURE(draw(window), R"(
┌────────┐
│  abc   │
├────────┤
└────────┘
)");
}

TEST_F(FrameTest, a_title_as_long_as_the_frame_is_wide_stands_on_the_frames_sides) {
    Window window(root(), 0, 0, 4, 6);
    window.setTitle("abcdef", 2);
    EXPECT_PICTURE(draw(window), R"(
┌────┐
abcdef
├────┤
└────┘
)");
}

TEST_F(FrameTest, a_title_longer_than_the_frame_is_wide_is_not_printed_but_the_frame_is) {
    for (const char* const title : {"abcdefg", "abcdefgh", "abcdefghijklmnopqrst"}) {
        Window window(root(), 0, 0, 4, 6);
        window.setTitle(title, 3);
        window.setColors(2, 2, 1);
        const ScreenImage image = draw(window);
        EXPECT_PICTURE(image, R"(
┌────┐
│    │
├────┤
└────┘
)") << title;
        EXPECT_COLOURS(image, R"(
RRRRRR
RrrrrR
BBBBBB
RRRRRR
)");
    }
}

TEST_F(FrameTest, a_frame_too_low_for_the_line_under_the_title_has_none) {
    Window window(root(), 0, 0, 2, 9);
    window.setTitle("abc", 2);
    EXPECT_PICTURE(draw(window), R"(
┌───────┐
└  abc  ┘
)");
}

TEST_F(FrameTest, drawing_a_second_time_changes_nothing) {
    Window window(root(), 0, 0, 5, 13);
    window.setTitle("Title", 2);
    window.setColors(2, 2, 1);
    const ScreenImage first = draw(window);
    window.draw();
    EXPECT_SAME_LOOK(first, shown(0, 0, 5, 13));
}

/// Prints centred texts, as the title frame does.
class Poster : public Window {
  public:
    Poster(Window* parent, int lines, int columns) : Window(parent, 0, 0, lines, columns) {
        create();
    }
    using Window::printCentered;
};

TEST_F(FrameTest, centred_text_stands_in_the_columns_given_on_a_cleared_line) {
    Poster poster(root(), 2, 20);
    mvwaddstr(poster.getCursesWindow(), 1, 0, "....................");
    poster.printCentered(1, 4, 9, "abc", A_NORMAL);
    EXPECT_EQ(line_of(poster.getCursesWindow(), 1), ".....  abc  ........");
}

TEST_F(FrameTest, centred_text_in_no_columns_takes_eighty) {
    Poster poster(root(), 2, 80);
    poster.printCentered(1, 0, 0, "abcd", A_NORMAL);
    EXPECT_EQ(line_of(poster.getCursesWindow(), 1),
              std::string(38, ' ') + "abcd" + std::string(38, ' '));
}

TEST_F(FrameTest, centred_text_on_line_zero_goes_to_the_line_of_the_cursor) {
    Poster poster(root(), 3, 9);
    wmove(poster.getCursesWindow(), 2, 5);
    poster.printCentered(0, 0, 9, "abc", A_NORMAL);
    EXPECT_EQ(line_of(poster.getCursesWindow(), 0), "         ");
    EXPECT_EQ(line_of(poster.getCursesWindow(), 2), "   abc   ");
}

TEST_F(FrameTest, centred_text_switches_its_attributes_off_again) {
    Poster poster(root(), 2, 9);
    poster.printCentered(1, 0, 9, "abc", COLOR_PAIR(3) | A_BOLD);
    waddch(poster.getCursesWindow(), 'x');
    const ScreenImage image = shown();
    EXPECT_EQ(image.cell(1, 3).background, COLOR_RED);
    EXPECT_TRUE(image.cell(1, 3).bold);
    EXPECT_FALSE(image.cell(1, 6).bold);
    EXPECT_NE(image.cell(1, 6).background, COLOR_RED);
}

}  // namespace
