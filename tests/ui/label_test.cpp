#include "ui/label.h"

#include <cstring>

#include "tests/ui/ui_test.h"

namespace {

class LabelTest : public UiTest {
  protected:
    LabelTest() : label(root(), 2, 3, "Port:") { label.setColors(2, 2, 1); }

    ScreenImage draw() {
        label.draw();
        return shown(2, 3, 1, 5);
    }

    Label label;
};

TEST_F(LabelTest, is_one_line_high_and_as_wide_as_its_text) {
    EXPECT_EQ(label.getHeight(), 1);
    EXPECT_EQ(label.getWidth(), 5);
}

TEST_F(LabelTest, stands_at_its_place_of_the_parent) {
    Window frame(root(), 4, 10, 5, 20);
    frame.create();
    Label inside(&frame, 1, 2, "Inside");
    inside.draw();
    EXPECT_EQ(shown().find("Inside"), (Position{5, 12}));
}

TEST_F(LabelTest, without_a_highlight_has_its_own_colours) {
    const ScreenImage image = draw();
    EXPECT_PICTURE(image, "Port:\n");
    EXPECT_COLOURS(image, "BBBBB\n");
}

TEST_F(LabelTest, without_a_highlight_has_the_foreground_pair) {
    label.setColors(2, 1, 0);
    EXPECT_COLOURS(draw(), "kkkkk\n");
}

TEST_F(LabelTest, the_label_of_the_focused_field_is_white_on_black_but_for_its_colon) {
    label.setHighlight(1, 4);
    const ScreenImage image = draw();
    EXPECT_PICTURE(image, "Port:\n");
    EXPECT_COLOURS(image, "KKKKB\n");
}

TEST_F(LabelTest, a_highlight_of_its_whole_length_or_one_less_in_its_own_colours_draw_alike) {
    label.setHighlight(2, 5);
    const ScreenImage whole = draw();
    label.setHighlight(2, 4);
    EXPECT_SAME_LOOK(whole, draw());
    EXPECT_COLOURS(whole, "BBBBB\n");
}

TEST_F(LabelTest, losing_the_focus_takes_the_highlight_away) {
    const ScreenImage before = draw();
    label.setHighlight(1, 4);
    draw();
    label.setHighlight(2, 5);
    EXPECT_SAME_LOOK(before, draw());
}

TEST_F(LabelTest, a_highlight_of_no_characters_draws_all_in_the_background_pair) {
    label.setColors(2, 1, 0);
    label.setHighlight(3, 0);
    const ScreenImage image = draw();
    EXPECT_PICTURE(image, "Port:\n");
    EXPECT_COLOURS(image, "bbbbb\n");
}

TEST_F(LabelTest, what_follows_the_highlight_has_the_background_pair_not_the_foreground_pair) {
    label.setColors(2, 1, 0);
    label.setHighlight(3, 2);
    EXPECT_COLOURS(draw(), "rrbbb\n");
}

TEST_F(LabelTest, a_highlight_longer_than_the_text_colours_all_of_it) {
    label.setHighlight(1, 50);
    const ScreenImage image = draw();
    EXPECT_PICTURE(image, "Port:\n");
    EXPECT_COLOURS(image, "KKKKK\n");
}

TEST_F(LabelTest, an_empty_text_in_front_of_a_field_with_the_focus_draws_nothing) {
    Label empty(root(), 5, 10, "");
    empty.setColors(2, 2, 0);
    empty.setFocused(true);
    empty.draw();
    EXPECT_EQ(shown().rowText(5).find_first_not_of(' '), std::string::npos);
}

TEST_F(LabelTest, a_negative_pair_takes_the_highlight_away) {
    label.setHighlight(1, 4);
    draw();
    label.setHighlight(-1, 4);
    EXPECT_COLOURS(draw(), "BBBBB\n");
}

TEST_F(LabelTest, pair_0_is_a_highlight_too) {
    label.setColors(2, 1, 0);
    label.setHighlight(0, 2);
    EXPECT_COLOURS(draw(), "kkbbb\n");
}

TEST_F(LabelTest, set_focused_highlights_all_but_the_colon_and_back) {
    label.setFocused(true);
    EXPECT_COLOURS(draw(), "KKKKB\n");
    label.setFocused(false);
    EXPECT_COLOURS(draw(), "BBBBB\n");
}

TEST_F(LabelTest, keeps_a_copy_of_its_text) {
    char text[] = "First";
    Label copied(root(), 4, 0, text);
    std::strcpy(text, "wrong");
    copied.draw();
    EXPECT_PICTURE(shown(4, 0, 1, 5), "First\n");
}

TEST_F(LabelTest, percent_signs_are_plain_characters) {
    Label percent(root(), 4, 0, "100%s%d:");
    percent.draw();
    EXPECT_PICTURE(shown(4, 0, 1, 8), "100%s%d:\n");
    percent.setFocused(true);
    percent.draw();
    EXPECT_PICTURE(shown(4, 0, 1, 8), "100%s%d:\n");
}

}  // namespace
