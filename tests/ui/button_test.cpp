#include "ui/button.h"

#include <cstring>

#include "tests/ui/ui_test.h"

namespace {

/// A button as the dialogs have them.
class ButtonTest : public UiTest {
  protected:
    ButtonTest() : button(root(), 2, 3, 3, 6, "OK", 3) {}

    ScreenImage draw() {
        button.draw();
        return shown(2, 3, 3, 6);
    }

    Button button;
};

TEST_F(ButtonTest, ok_stands_at_column_2_of_the_middle_line) {
    EXPECT_PICTURE(draw(), R"(

  OK

)");
}

TEST_F(ButtonTest, yes_stands_at_column_1_of_the_middle_line) {
    Button yes(root(), 10, 3, 3, 6, "Yes", 3);
    yes.draw();
    EXPECT_PICTURE(shown(10, 3, 3, 6), R"(

 Yes

)");
}

TEST_F(ButtonTest, of_an_even_height_has_its_caption_above_the_middle) {
    Button high(root(), 10, 3, 4, 6, "OK", 3);
    high.draw();
    EXPECT_PICTURE(shown(10, 3, 4, 6), R"(

  OK


)");
}

TEST_F(ButtonTest, is_black_on_red_at_first) {
    EXPECT_COLOURS(draw(), R"(
rrrrrr
rrrrrr
rrrrrr
)");
}

TEST_F(ButtonTest, with_the_focus_has_a_bold_caption_in_white_on_black) {
    button.setLook(1, 1);
    EXPECT_COLOURS(draw(), R"(
rrrrrr
rrKKrr
rrrrrr
)");
}

TEST_F(ButtonTest, without_the_focus_has_a_plain_caption_in_its_own_pair) {
    button.setLook(1, 1);
    draw();
    button.setLook(3, 0);
    EXPECT_COLOURS(draw(), R"(
rrrrrr
rrrrrr
rrrrrr
)");
}

TEST_F(ButtonTest, without_a_caption_pair_can_be_bold_in_its_own) {
    button.setLook(-1, 1);
    EXPECT_COLOURS(draw(), R"(
rrrrrr
rrRRrr
rrrrrr
)");
}

TEST_F(ButtonTest, a_caption_pair_without_emphasis_is_not_bold) {
    button.setLook(1, 0);
    EXPECT_COLOURS(draw(), R"(
rrrrrr
rrkkrr
rrrrrr
)");
}

TEST_F(ButtonTest, drawing_leaves_neither_weight_nor_caption_colour_switched_on) {
    button.setLook(1, 1);
    button.draw();
    mvwaddch(button.getCursesWindow(), 0, 0, 'x');
    EXPECT_COLOURS(shown(2, 3, 1, 6), "rrrrrr\n");
}

TEST_F(ButtonTest, set_focused_gives_the_look_with_the_focus_and_without) {
    button.setFocused(true);
    EXPECT_COLOURS(draw().region(1, 0, 1, 6), "rrKKrr\n");
    button.setFocused(false);
    EXPECT_COLOURS(draw().region(1, 0, 1, 6), "rrrrrr\n");
}

TEST_F(ButtonTest, the_cursor_is_placed_right_behind_the_caption) {
    button.draw();
    button.placeCursor();
    EXPECT_EQ(cursor_in(button.getCursesWindow()), (Position{1, 4}));
}

TEST_F(ButtonTest, a_caption_as_long_as_the_button_is_wide_fills_it) {
    Button full(root(), 10, 3, 3, 6, "Cancel", 3);
    full.draw();
    EXPECT_PICTURE(shown(10, 3, 3, 8), R"(

Cancel

)");
}

TEST_F(ButtonTest, a_caption_longer_than_the_button_is_wide_is_not_drawn) {
    for (const char* const caption : {"Cancels", "Cancel it", "Cancel all of it"}) {
        Button narrow(root(), 10, 3, 3, 6, caption, 3);
        narrow.draw();
        EXPECT_PICTURE(shown(10, 3, 3, 20), "\n\n\n\n") << caption;
    }
}

TEST_F(ButtonTest, keeps_a_copy_of_its_caption) {
    char caption[] = "Back";
    Button copied(root(), 10, 3, 1, 6, caption, 3);
    std::strcpy(caption, "Next");
    copied.draw();
    EXPECT_PICTURE(shown(10, 3, 1, 6), " Back\n");
}

TEST_F(ButtonTest, percent_signs_in_the_caption_are_plain_characters) {
    Button percent(root(), 10, 3, 1, 6, "%s%d", 3);
    percent.draw();
    EXPECT_PICTURE(shown(10, 3, 1, 6), " %s%d\n");
}

}  // namespace
