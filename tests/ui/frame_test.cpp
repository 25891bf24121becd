#include <string>
#include <tuple>

#include "tests/ui/ui_test.h"
#include "ui/window.h"

namespace {

/// Draws one window in the upper left corner of the terminal.
class FrameTest : public UiTest {
  protected:
    ScreenImage create(Window& window) {
        window.create();
        return drawn(window);
    }
};

TEST_F(FrameTest, a_plain_window_is_its_background_and_text_in_it_has_the_foreground_pair) {
    for (const auto& [back, fore, bold, looks] :
         {std::tuple{2, 1, 0, "kkkkbb"}, {2, 2, 1, "BBBBbb"}}) {
        Window window(root(), 0, 0, 1, 6);
        window.setColors(back, fore, bold);
        EXPECT_PICTURE(create(window), "\n\n");
        mvwaddstr(window.getCursesWindow(), 0, 0, "text");
        EXPECT_COLOURS(look(window), looks);
    }
}

TEST_F(FrameTest, colours_are_the_terminals_until_they_are_set_and_the_window_drawn) {
    Window window(root(), 0, 0, 1, 6);
    create(window);
    mvwaddstr(window.getCursesWindow(), 0, 0, "text");
    EXPECT_COLOURS(look(window), "kkkkkk");
    window.setColors(2, 2, 1);
    EXPECT_COLOURS(drawn(window), "BBBBbb");
}

TEST_F(FrameTest, a_box_is_a_line_around_the_window) {
    Window window(root(), 0, 0, 3, 6);
    window.setBoxed();
    window.setColors(2, 2, 0);
    const ScreenImage image = create(window);
    EXPECT_PICTURE(image, "┌────┐\n│    │\n└────┘\n");
    EXPECT_COLOURS(image, "bbbbbb\nbbbbbb\nbbbbbb\n");
}

// What a title leaves over to its sides goes to the right.
TEST_F(FrameTest, a_title_stands_in_the_middle_and_is_left_out_when_it_is_longer_than_the_frame) {
    for (const auto& [title, width, line] : {std::tuple{"Title", 13, "│   Title   │"},
                                             {"abc", 10, "│  abc   │"},
                                             {"abcdef", 6, "abcdef"},
                                             {"abcdefg", 6, "│    │"},
                                             {"abcdefgh", 6, "│    │"},
                                             {"abcdefghijklmnopqrst", 6, "│    │"}}) {
        Window window(root(), 0, 0, 4, width);
        window.setTitle(title, 2);
        EXPECT_EQ(create(window).rowText(1), line);
    }
}

TEST_F(FrameTest, frame_and_last_title_are_bold_in_the_title_pair_and_the_line_under_it_is_not) {
    Window window(root(), 0, 0, 5, 9);
    window.setTitle("First", 2);
    std::string title = "abc";
    window.setTitle(title.c_str(), 3);
    title = "xyz";
    window.setColors(2, 1, 0);
    const ScreenImage image = create(window);
    EXPECT_PICTURE(image, R"(
┌───────┐
│  abc  │
├───────┤
│       │
└───────┘
)");
    EXPECT_COLOURS(image, R"(
RRRRRRRRR
RrrRRRrrR
kkkkkkkkk
RbbbbbbbR
RRRRRRRRR
)");
    EXPECT_SAME_LOOK(image, drawn(window));
    mvwaddch(window.getCursesWindow(), 3, 1, 'x');
    EXPECT_COLOURS(look(window).region(3, 1, 1, 1), "b");
}

TEST_F(FrameTest, a_frame_too_low_for_the_line_under_the_title_has_none) {
    Window window(root(), 0, 0, 2, 9);
    window.setTitle("abc", 2);
    EXPECT_PICTURE(create(window), "┌───────┐\n└  abc  ┘\n");
}

/// Prints centred texts, as the title frame does.
class Poster : public Window {
  public:
    explicit Poster(Window* parent) : Window(parent, 0, 0, 3, 80) { create(); }
    using Window::printCentered;
};

TEST_F(FrameTest, centred_text_stands_in_the_columns_given_on_a_cleared_line) {
    Poster poster(root());
    mvwaddstr(poster.getCursesWindow(), 1, 0, std::string(80, '.').c_str());
    poster.printCentered(1, 4, 9, "abc", A_NORMAL);
    EXPECT_EQ(look(poster).rowText(1), ".....  abc  " + std::string(68, '.'));
}

TEST_F(FrameTest, centred_text_in_no_columns_takes_eighty_and_on_line_0_goes_to_the_cursors_line) {
    Poster poster(root());
    wmove(poster.getCursesWindow(), 2, 5);
    poster.printCentered(0, 0, 0, "abc", A_NORMAL);
    EXPECT_PICTURE(look(poster), "\n\n\n" + std::string(38, ' ') + "abc");
}

}  // namespace
