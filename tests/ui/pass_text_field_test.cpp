#include "ui/pass_text_field.h"

#include <string>

#include "tests/ui/field_test.h"

namespace {

using PassTextFieldTest = FieldTest<PassTextField>;

TEST_F(PassTextFieldTest, shows_as_many_stars_as_characters_were_typed_and_keeps_the_characters) {
    typeIn("abc");
    EXPECT_EQ(line(), "***   ");
    EXPECT_EQ(cursorColumn(), 3);
    EXPECT_EQ(text(), "abc");
}

TEST_F(PassTextFieldTest, shows_at_most_as_many_stars_as_it_is_wide) {
    for (const char* const typed : {"a", "b", "c", "d", "e", "f", "g", "h"})
        typeIn(typed);
    EXPECT_EQ(line(), "***** ");
    EXPECT_EQ(cursorColumn(), 5);
    EXPECT_EQ(text(), "abcdefgh");
}

TEST_F(PassTextFieldTest, never_shows_a_character_of_the_password) {
    for (const char* const character : {"a", "b", "c", "d", "e", "f", "g", "h"}) {
        typeIn(character);
        EXPECT_EQ(line().find_first_not_of("* "), std::string::npos) << line();
    }
    for (int i = 0; i < 8; ++i) {
        field.onKey(KEY_BACKSPACE);
        EXPECT_EQ(line().find_first_not_of("* "), std::string::npos) << line();
    }
}

TEST_F(PassTextFieldTest, stars_have_the_colours_of_the_field) {
    typeIn("ab");
    EXPECT_COLOURS(shown(2, 3, 1, 6), "BBbbbb\n");
}

TEST_F(PassTextFieldTest, backspace_takes_one_star_away) {
    typeIn("abc");
    field.onKey(127);
    EXPECT_EQ(line(), "**    ");
    EXPECT_EQ(cursorColumn(), 2);
    EXPECT_EQ(text(), "ab");
}

TEST_F(PassTextFieldTest, backspace_from_six_characters_to_five_still_shows_five_stars) {
    typeIn("abcdef");
    field.onKey(8);
    EXPECT_EQ(line(), "***** ");
    EXPECT_EQ(cursorColumn(), 5);
    field.onKey(8);
    EXPECT_EQ(line(), "****  ");
    EXPECT_EQ(cursorColumn(), 4);
}

TEST_F(PassTextFieldTest, typing_after_a_backspace_replaces_the_character) {
    typeIn("abc");
    field.onKey(8);
    typeIn("z");
    EXPECT_EQ(text(), "abz");
    EXPECT_EQ(line(), "***   ");
}

TEST_F(PassTextFieldTest, set_text_shows_its_stars_when_drawn) {
    field.setText("abc");
    EXPECT_EQ(line(), "      ");
    field.draw();
    EXPECT_EQ(line(), "***   ");
    EXPECT_EQ(text(), "abc");
}

TEST_F(PassTextFieldTest, set_text_counts_its_characters_only_when_drawn) {
    field.setText("secret");
    field.placeCursor();
    EXPECT_EQ(cursorColumn(), 0);
    field.draw();
    field.placeCursor();
    EXPECT_EQ(cursorColumn(), 5);
}

TEST_F(PassTextFieldTest, keys_before_the_next_drawing_go_by_the_old_count) {
    typeIn("a");
    field.setText("secret");
    typeIn("X");
    EXPECT_EQ(text(), "sXcret");
}

TEST_F(PassTextFieldTest, a_character_typed_behind_a_shortened_text_uncovers_what_stood_there) {
    field.setText("abcdefgh");
    field.setText("ab");
    field.draw();
    typeIn("X");
    EXPECT_EQ(text(), "abXdefgh");
}

TEST_F(PassTextFieldTest, typing_draws_the_field_again_so_an_uncovered_text_counts_at_once) {
    field.setText("abcde");
    field.setText("a");
    field.draw();
    typeIn("X");
    EXPECT_EQ(line(), "***** ");
}

TEST_F(PassTextFieldTest, drawing_blanks_nothing_so_stars_of_a_longer_text_stay) {
    typeIn("abcd");
    field.setText("a");
    field.draw();
    EXPECT_EQ(line(), "****  ");
    EXPECT_EQ(cursorColumn(), 1);
}

TEST_F(PassTextFieldTest, can_be_used_as_a_text_field) {
    TextField& base = field;
    base.setText("ab");
    base.draw();
    base.onKey('c');
    EXPECT_EQ(line(), "***   ");
    EXPECT_EQ(text(), "abc");
}

}  // namespace
