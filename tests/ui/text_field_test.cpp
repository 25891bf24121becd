#include "ui/text_field.h"

#include "tests/ui/field_test.h"

namespace {

using TextFieldTest = FieldTest<TextField>;

TEST_F(TextFieldTest, is_as_high_as_it_was_made_with_its_text_on_the_first_line) {
    TextField high(root(), 5, 3, 8, 5, 2);
    EXPECT_EQ(high.getHeight(), 2);
    high.setText("abc");
    high.draw();
    EXPECT_PICTURE(shown(5, 3, 2, 6), R"(
abc

)");
}

TEST_F(TextFieldTest, is_drawn_in_its_colours_on_the_screen) {
    typeIn("abc");
    const ScreenImage image = shown(2, 3, 1, 6);
    EXPECT_PICTURE(image, "abc\n");
    EXPECT_COLOURS(image, "BBBbbb\n");
}

TEST_F(TextFieldTest, shows_characters_as_they_are_typed_and_the_cursor_behind_them) {
    typeIn("ab");
    EXPECT_EQ(line(), "ab    ");
    EXPECT_EQ(cursorColumn(), 2);
    EXPECT_EQ(text(), "ab");
}

TEST_F(TextFieldTest, with_as_many_characters_as_it_shows_has_the_cursor_in_the_spare_column) {
    typeIn("abcde");
    EXPECT_EQ(line(), "abcde ");
    EXPECT_EQ(cursorColumn(), 5);
}

TEST_F(TextFieldTest, with_seven_characters_shows_the_third_to_the_seventh) {
    typeIn("abcdefg");
    EXPECT_EQ(line(), "cdefg ");
    EXPECT_EQ(cursorColumn(), 5);
    EXPECT_EQ(text(), "abcdefg");
}

TEST_F(TextFieldTest, backspace_removes_the_last_character_and_stands_in_its_place) {
    typeIn("abc");
    field.onKey(KEY_BACKSPACE);
    EXPECT_EQ(text(), "ab");
    EXPECT_EQ(line(), "ab    ");
    EXPECT_EQ(cursorColumn(), 2);
}

TEST_F(TextFieldTest, backspace_from_six_characters_to_five_shows_all_five) {
    typeIn("abcdef");
    field.onKey(KEY_BACKSPACE);
    EXPECT_EQ(line(), "abcde ");
    EXPECT_EQ(cursorColumn(), 5);
}

TEST_F(TextFieldTest, backspace_from_five_characters_to_four_clears_the_last_place) {
    typeIn("abcde");
    field.onKey(KEY_BACKSPACE);
    EXPECT_EQ(line(), "abcd  ");
    EXPECT_EQ(cursorColumn(), 4);
}

TEST_F(TextFieldTest, backspace_in_a_long_text_moves_the_tail_to_the_right) {
    typeIn("abcdefgh");
    field.onKey(KEY_BACKSPACE);
    EXPECT_EQ(line(), "cdefg ");
    field.onKey(KEY_BACKSPACE);
    EXPECT_EQ(line(), "bcdef ");
    EXPECT_EQ(cursorColumn(), 5);
}

TEST_F(TextFieldTest, set_text_replaces_the_text_and_shows_it_when_drawn) {
    typeIn("old text");
    field.setText("new");
    EXPECT_EQ(text(), "new");
    EXPECT_EQ(line(), " text ");
    field.draw();
    EXPECT_EQ(line(), "new   ");
    field.placeCursor();
    EXPECT_EQ(cursorColumn(), 3);
}

TEST_F(TextFieldTest, draw_shows_the_tail_of_a_long_text) {
    field.setText("abcdefg");
    field.draw();
    EXPECT_EQ(line(), "cdefg ");
}

TEST_F(TextFieldTest, the_cursor_is_placed_behind_the_text_or_in_the_spare_column) {
    const auto placed_column = [&](const char* content) {
        field.setText(content);
        wmove(field.getCursesWindow(), 0, 1);
        field.placeCursor();
        return cursorColumn();
    };
    EXPECT_EQ(placed_column(""), 0);
    EXPECT_EQ(placed_column("abc"), 3);
    EXPECT_EQ(placed_column("abcde"), 5);
    EXPECT_EQ(placed_column("abcdefg"), 5);
}

TEST_F(TextFieldTest, typing_goes_on_behind_a_text_that_was_set) {
    field.setText("abc");
    field.draw();
    typeIn("d");
    EXPECT_EQ(text(), "abcd");
    EXPECT_EQ(line(), "abcd  ");
}

TEST_F(TextFieldTest, a_short_text_after_a_long_one_leaves_nothing_of_it) {
    field.setText("abcdefgh");
    field.draw();
    field.setText("x");
    field.draw();
    EXPECT_EQ(line(), "x     ");
    typeIn("y");
    EXPECT_EQ(text(), "xy");
}

TEST_F(TextFieldTest, percent_signs_are_plain_characters) {
    field.setText("%s%d%");
    field.draw();
    EXPECT_EQ(line(), "%s%d% ");
}

TEST_F(TextFieldTest, drawing_and_typing_show_the_same) {
    for (const char* const character : {"a", "b", "c", "d", "e", "f", "g", "h"}) {
        typeIn(character);
        const ScreenImage typed = shown(2, 3, 1, 6);
        field.draw();
        EXPECT_SAME_LOOK(typed, shown(2, 3, 1, 6));
    }
}

}  // namespace
