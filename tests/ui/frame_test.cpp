#include <string>

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

/// The colours of a window and what its background and a text in it look like then.
struct Colours {
    int back;
    int fore;
    int bold;
    const char* looks;
};

TEST_F(FrameTest, a_plain_window_is_its_background_and_text_in_it_has_the_foreground_pair) {
    for (const Colours& colours : {Colours{2, 1, 0, "kkkkbb"}, Colours{2, 2, 1, "BBBBbb"}}) {
        Window window(root(), 0, 0, 1, 6);
        window.setColors(colours.back, colours.fore, colours.bold);
        EXPECT_PICTURE(create(window), "\n\n");
        mvwaddstr(window.getCursesWindow(), 0, 0, "text");
        EXPECT_COLOURS(look(window), colours.looks);
    }
    Window window(root(), 0, 0, 1, 6);
    create(window);
    mvwaddstr(window.getCursesWindow(), 0, 0, "text");
    EXPECT_COLOURS(look(window), "kkkkkk");
}

TEST_F(FrameTest, drawing_again_recolours_what_stands_in_the_window) {
    Window window(root(), 0, 0, 1, 6);
    window.setColors(2, 2, 0);
    create(window);
    mvwaddstr(window.getCursesWindow(), 0, 0, "text");
    window.setColors(2, 2, 1);
    EXPECT_COLOURS(drawn(window), "BBBBbb\n");
}

TEST_F(FrameTest, a_box_is_a_line_around_the_window) {
    Window window(root(), 0, 0, 3, 6);
    window.setBoxed();
    window.setColors(2, 2, 0);
    const ScreenImage image = create(window);
    EXPECT_PICTURE(image, "┌────┐\n│    │\n└────┘\n");
    EXPECT_COLOURS(image, "bbbbbb\nbbbbbb\nbbbbbb\n");
}

/// A title and how wide the frame is, and its second line; what a title leaves over to its sides
/// goes to the right.
struct Titled {
    const char* title;
    int width;
    const char* line;
};

TEST_F(FrameTest, a_title_stands_in_the_middle_and_is_left_out_when_it_is_longer_than_the_frame) {
    for (const Titled& titled :
         {Titled{"Title", 13, "│   Title   │"}, Titled{"abc", 10, "│  abc   │"},
          Titled{"abcdef", 6, "abcdef"}, Titled{"abcdefg", 6, "│    │"},
          Titled{"abcdefgh", 6, "│    │"}, Titled{"abcdefghijklmnopqrst", 6, "│    │"}}) {
        Window window(root(), 0, 0, 4, titled.width);
        window.setTitle(titled.title, 2);
        EXPECT_EQ(create(window).rowText(1), titled.line);
    }
}

TEST_F(FrameTest, frame_and_title_are_bold_in_the_title_pair_and_the_line_under_it_is_not) {
    Window window(root(), 0, 0, 5, 9);
    window.setTitle("abc", 3);
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

TEST_F(FrameTest, keeps_a_copy_of_its_title_and_a_second_one_takes_the_place_of_the_first) {
    Window window(root(), 0, 0, 4, 20);
    window.setTitle("First", 2);
    std::string title = "Second";
    window.setTitle(title.c_str(), 3);
    title = "wrong!";
    const ScreenImage image = create(window);
    EXPECT_EQ(image.find("Second"), (Position{1, 7}));
    EXPECT_EQ(image.cell(1, 7).background, COLOR_RED);
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
    poster.printCentered(0, 0, 0, "abcd", A_NORMAL);
    EXPECT_PICTURE(look(poster), "\n\n\n" + std::string(38, ' ') + "abcd");
}

}  // namespace
