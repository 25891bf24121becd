#include "tests/ui/field_test.h"
#include "ui/pass_text_field.h"

namespace {

/// What text fields and password fields have in common: the text, whatever the screen shows.
template <class Field>
class EveryField : public FieldTest<Field> {};

class FieldNames {
  public:
    template <class Field>
    static std::string GetName(int /*index*/) {
        return std::is_same_v<Field, TextField> ? "TextField" : "PassTextField";
    }
};

using Fields = testing::Types<TextField, PassTextField>;
TYPED_TEST_SUITE(EveryField, Fields, FieldNames);

TYPED_TEST(EveryField, is_one_column_wider_than_what_it_shows_and_reads_cursor_keys_as_one) {
    EXPECT_EQ(this->field.getHeight(), 1);
    EXPECT_EQ(this->field.getWidth(), 6);
    EXPECT_TRUE(is_keypad(this->field.getCursesWindow()));
}

TYPED_TEST(EveryField, is_empty_at_first) {
    EXPECT_EQ(this->text(), "");
    EXPECT_EQ(this->line(), "      ");
    this->field.placeCursor();
    EXPECT_EQ(this->cursorColumn(), 0);
}

TYPED_TEST(EveryField, that_accepts_three_characters_ignores_a_fourth) {
    TypeParam three(this->root(), 5, 3, 3, 5, 1);
    for (const int key : {'a', 'b', 'c', 'd'})
        three.onKey(key);
    EXPECT_STREQ(HeapText(three.getText()).get(), "abc");
}

TYPED_TEST(EveryField, full_ignores_more_characters_while_it_shows_its_tail) {
    this->typeIn("abcdefgh");
    const std::string full = this->line();
    this->typeIn("ij");
    EXPECT_EQ(this->text(), "abcdefgh");
    EXPECT_EQ(this->line(), full);
}

TYPED_TEST(EveryField, full_takes_a_character_again_after_a_backspace) {
    this->typeIn("abcdefgh");
    this->field.onKey(KEY_BACKSPACE);
    this->typeIn("z");
    EXPECT_EQ(this->text(), "abcdefgz");
}

TYPED_TEST(EveryField, backspace_on_an_empty_field_does_nothing) {
    mvwaddch(this->field.getCursesWindow(), 0, 0, '*');
    this->field.onKey(KEY_BACKSPACE);
    EXPECT_EQ(this->text(), "");
    EXPECT_EQ(this->line(), "*     ");
    this->typeIn("a");
    EXPECT_EQ(this->text(), "a");
}

TYPED_TEST(EveryField, all_three_backspaces_remove_a_character) {
    for (const int key : {127, 8, KEY_BACKSPACE}) {
        this->typeIn("ab");
        this->field.onKey(key);
        EXPECT_EQ(this->text(), "a") << key;
        this->field.onKey(key);
        EXPECT_EQ(this->text(), "") << key;
    }
}

TYPED_TEST(EveryField, tab_newline_and_escape_never_enter_the_text) {
    this->typeIn("a");
    const std::string before = this->line();
    for (const int key : {9, 10, 13, 27, 0, 7})
        this->field.onKey(key);
    EXPECT_EQ(this->text(), "a");
    EXPECT_EQ(this->line(), before);
}

TYPED_TEST(EveryField, cursor_and_function_keys_never_enter_the_text) {
    this->typeIn("a");
    const std::string before = this->line();
    // The last one would be an "a" if only its low byte counted.
    for (const int key : {KEY_DOWN, KEY_LEFT, KEY_RIGHT, KEY_HOME, KEY_DC, KEY_F(1), 256 + 'a'})
        this->field.onKey(key);
    EXPECT_EQ(this->text(), "a");
    EXPECT_EQ(this->line(), before);
    EXPECT_EQ(this->cursorColumn(), 1);
}

TYPED_TEST(EveryField, up_is_returned_and_does_nothing) {
    this->typeIn("ab");
    const std::string before = this->line();
    EXPECT_EQ(this->field.onKey(KEY_UP), KEY_UP);
    EXPECT_EQ(this->text(), "ab");
    EXPECT_EQ(this->line(), before);
    EXPECT_EQ(this->cursorColumn(), 2);
}

TYPED_TEST(EveryField, no_key_at_all_is_no_character) {
    this->field.onKey(ERR);
    EXPECT_EQ(this->text(), "");
}

TYPED_TEST(EveryField, part_of_a_character_of_several_bytes_is_not_printable) {
    this->typeIn("\xc3\xa9");
    EXPECT_EQ(this->text(), "");
}

TYPED_TEST(EveryField, every_printable_character_enters_the_text_from_blank_to_tilde) {
    for (int key = ' '; key <= '~'; ++key) {
        this->field.onKey(key);
        EXPECT_EQ(this->text(), std::string(1, static_cast<char>(key)));
        this->field.onKey(KEY_BACKSPACE);
    }
}

TYPED_TEST(EveryField, set_text_to_null_is_ignored) {
    this->typeIn("ab");
    this->field.setText(nullptr);
    EXPECT_EQ(this->text(), "ab");
    this->typeIn("c");
    EXPECT_EQ(this->text(), "abc");
}

TYPED_TEST(EveryField, set_text_takes_more_than_the_longest_accepted_and_keys_only_shorten_it) {
    const std::string long_text(200, 'x');
    this->field.setText((long_text + "yz").c_str());
    EXPECT_EQ(this->text(), long_text + "yz");
    this->field.draw();
    this->typeIn("a");
    EXPECT_EQ(this->text(), long_text + "yz");
    this->field.onKey(KEY_BACKSPACE);
    EXPECT_EQ(this->text(), long_text + "y");
}

TYPED_TEST(EveryField, has_room_for_the_longest_accepted_after_a_short_text_was_set) {
    this->field.setText("");
    this->field.setText("a");
    this->field.draw();
    this->typeIn("bcdefghij");
    EXPECT_EQ(this->text(), "abcdefgh");
}

TYPED_TEST(EveryField, get_text_gives_a_copy_that_the_caller_may_change) {
    this->typeIn("ab");
    const HeapText copy(this->field.getText());
    copy.get()[0] = 'z';
    EXPECT_EQ(this->text(), "ab");
}

}  // namespace
