#include "ui/text_field.h"

#include <algorithm>
#include <string>

#include "tests/ui/ui_test.h"
#include "ui/label.h"
#include "wizard/base/heap_text.h"

namespace {

/// A field of class `Field` that takes 8 characters and shows 5 of them.
template <class Field>
class FieldTest : public UiTest {
  protected:
    FieldTest() : field(root(), 2, 3, 8, 5, 1) {
        field.setColors(2, 2, 1);
        field.draw();
    }

    void typeIn(const std::string& characters) {
        for (const char character : characters) field.onKey(static_cast<unsigned char>(character));
    }

    void set(const char* text) {
        field.setText(text);
        field.draw();
    }

    std::string text() const { return HeapText(field.getText()).get(); }

    /// What the field's curses window holds.
    std::string line() const { return line_of(field.getCursesWindow(), 0); }

    int cursorColumn() const { return cursor_in(field.getCursesWindow()).col; }

    /// What the field shows where a TextField shows `line`.
    std::string echoed(std::string line) const {
        if (std::is_same_v<Field, PassTextField>)
            std::replace_if(
                line.begin(), line.end(), [](char shown) { return shown != ' '; }, '*');
        return line;
    }

    Field field;
};

/// What text fields and password fields have in common: the text, whatever the screen shows.
template <class Field>
class EveryField : public FieldTest<Field> {};

struct FieldNames {
    template <class Field>
    static std::string GetName(int /*index*/) {
        return std::is_same_v<Field, TextField> ? "TextField" : "PassTextField";
    }
};

using Fields = testing::Types<TextField, PassTextField>;
TYPED_TEST_SUITE(EveryField, Fields, FieldNames);

/// Bytes typed, the text that they make, what a field shows and where the cursor stands.
struct Typed {
    const char* keys;
    const char* text;
    const char* line;
    int cursor;
};

const Typed typed_texts[] = {
    {"", "", "      ", 0},
    {"ab", "ab", "ab    ", 2},
    {"abcde", "abcde", "abcde ", 5},
    {"abcdefg", "abcdefg", "cdefg ", 5},
    {"abcdefghij", "abcdefgh", "defgh ", 5},
    {"abcdefghij\bz", "abcdefgz", "defgz ", 5},
    {"\b", "", "      ", 0},
    {"\ba", "a", "a     ", 1},
    {"abc\b", "ab", "ab    ", 2},
    {"abc\x7f", "ab", "ab    ", 2},
    {"abc\b\b\b\b", "", "      ", 0},
    {"abc\bz", "abz", "abz   ", 3},
    {"abcde\b", "abcd", "abcd  ", 4},
    {"abcdef\b", "abcde", "abcde ", 5},
    {"abcdefgh\b", "abcdefg", "cdefg ", 5},
    {"abcdefgh\b\b", "abcdef", "bcdef ", 5},
    {"a\t\n\r\x1b\a\x1f", "a", "a     ", 1},
    {"\xc3\xa9\xff", "", "      ", 0},
    {"%s%d%", "%s%d%", "%s%d% ", 5},
};

TYPED_TEST(EveryField, shows_what_is_typed_and_a_fresh_drawing_shows_the_same) {
    for (const Typed& typed : typed_texts) {
        TypeParam fresh(this->root(), 2, 3, 8, 5, 1);
        fresh.draw();
        for (const char* key = typed.keys; *key != '\0'; ++key)
            EXPECT_EQ(fresh.onKey(static_cast<unsigned char>(*key)),
                      static_cast<unsigned char>(*key));
        EXPECT_EQ(std::string(HeapText(fresh.getText()).get()), typed.text) << typed.keys;
        EXPECT_EQ(line_of(fresh.getCursesWindow(), 0), this->echoed(typed.line)) << typed.keys;
        EXPECT_EQ(cursor_in(fresh.getCursesWindow()).col, typed.cursor) << typed.keys;
        fresh.draw();
        fresh.placeCursor();
        EXPECT_EQ(line_of(fresh.getCursesWindow(), 0), this->echoed(typed.line)) << typed.keys;
        EXPECT_EQ(cursor_in(fresh.getCursesWindow()).col, typed.cursor) << typed.keys;
    }
}

TYPED_TEST(EveryField, is_as_high_as_it_was_made_and_one_column_wider_than_what_it_shows) {
    TypeParam high(this->root(), 5, 3, 8, 5, 2);
    EXPECT_EQ(high.getHeight(), 2);
    EXPECT_EQ(high.getWidth(), 6);
    EXPECT_TRUE(is_keypad(high.getCursesWindow()));
    EXPECT_TRUE(high.showsCursor());
    high.setText("abc");
    EXPECT_EQ(this->drawn(high).rowText(0), this->echoed("abc   "));
}

TYPED_TEST(EveryField, is_drawn_in_its_colours) {
    this->typeIn("abc");
    EXPECT_COLOURS(this->look(this->field), "BBBbbb\n");
    EXPECT_COLOURS(this->drawn(this->field), "BBBbbb\n");
}

TYPED_TEST(EveryField, every_printable_character_enters_the_text_and_a_backspace_key_removes_it) {
    for (int key = ' '; key <= '~'; ++key) {
        this->field.onKey(key);
        EXPECT_EQ(this->text(), std::string(1, static_cast<char>(key)));
        EXPECT_EQ(this->field.onKey(KEY_BACKSPACE), KEY_BACKSPACE);
        EXPECT_EQ(this->text(), "");
    }
}

TYPED_TEST(EveryField, cursor_and_function_keys_are_returned_and_do_nothing) {
    this->typeIn("a");
    // The last but one would be an "a" if only its low byte counted.
    for (const int key :
         {KEY_UP, KEY_DOWN, KEY_LEFT, KEY_RIGHT, KEY_HOME, KEY_DC, KEY_F(1), 256 + 'a', ERR}) {
        EXPECT_EQ(this->field.onKey(key), key);
        EXPECT_EQ(this->text(), "a");
        EXPECT_EQ(this->line(), this->echoed("a     "));
        EXPECT_EQ(this->cursorColumn(), 1);
    }
}

TYPED_TEST(EveryField, backspace_on_an_empty_field_draws_nothing) {
    mvwaddch(this->field.getCursesWindow(), 0, 0, '*');
    this->field.onKey(KEY_BACKSPACE);
    EXPECT_EQ(this->line(), "*     ");
}

TYPED_TEST(EveryField, set_text_to_null_is_ignored) {
    this->typeIn("ab");
    this->field.setText(nullptr);
    this->typeIn("c");
    EXPECT_EQ(this->text(), "abc");
}

TYPED_TEST(EveryField, set_text_takes_more_than_the_longest_accepted_and_keys_only_shorten_it) {
    const std::string long_text(200, 'x');
    this->set((long_text + "yz").c_str());
    EXPECT_EQ(this->text(), long_text + "yz");
    this->typeIn("a");
    EXPECT_EQ(this->text(), long_text + "yz");
    this->field.onKey(KEY_BACKSPACE);
    EXPECT_EQ(this->text(), long_text + "y");
}

TYPED_TEST(EveryField, has_room_for_the_longest_accepted_after_a_short_text_was_set) {
    this->field.setText("");
    this->set("a");
    this->typeIn("bcdefghij");
    EXPECT_EQ(this->text(), "abcdefgh");
}

TYPED_TEST(EveryField, get_text_gives_a_copy_that_the_caller_may_change) {
    this->typeIn("ab");
    const HeapText copy(this->field.getText());
    copy.get()[0] = 'z';
    EXPECT_EQ(this->text(), "ab");
}

TYPED_TEST(EveryField, marks_its_label_while_it_has_the_focus_if_it_has_one) {
    Label label(this->root(), 5, 3, "Port:");
    label.setColors(2, 2, 1);
    this->field.setFocused(true);
    EXPECT_COLOURS(this->drawn(label), "BBBBB\n");
    this->field.setLabel(&label);
    this->field.setFocused(true);
    EXPECT_COLOURS(this->drawn(label), "KKKKB\n");
    this->field.setFocused(false);
    EXPECT_COLOURS(this->drawn(label), "BBBBB\n");
}

using TextFieldTest = FieldTest<TextField>;

TEST_F(TextFieldTest, set_text_replaces_the_text_and_shows_it_when_drawn) {
    typeIn("old text");
    field.setText("new");
    EXPECT_EQ(text(), "new");
    EXPECT_EQ(line(), " text ");
    field.placeCursor();
    EXPECT_EQ(cursorColumn(), 3);
    field.draw();
    EXPECT_EQ(line(), "new   ");
    typeIn("er");
    EXPECT_EQ(line(), "newer ");
    EXPECT_EQ(text(), "newer");
    set("abcdefg");
    EXPECT_EQ(line(), "cdefg ");
}

using PassTextFieldTest = FieldTest<PassTextField>;

TEST_F(PassTextFieldTest, set_text_counts_its_characters_only_when_drawn) {
    field.setText("secret");
    EXPECT_EQ(line(), "      ");
    field.placeCursor();
    EXPECT_EQ(cursorColumn(), 0);
    field.draw();
    EXPECT_EQ(line(), "***** ");
    field.placeCursor();
    EXPECT_EQ(cursorColumn(), 5);
}

TEST_F(PassTextFieldTest, keys_before_the_next_drawing_go_by_the_old_count) {
    typeIn("a");
    field.setText("secret");
    typeIn("X");
    EXPECT_EQ(text(), "sXcret");
}

TEST_F(PassTextFieldTest, a_character_typed_after_a_shortened_text_uncovers_what_stood_there) {
    field.setText("abcdefgh");
    set("ab");
    typeIn("X");
    EXPECT_EQ(text(), "abXdefgh");
    EXPECT_EQ(line(), "***** ");
    // It counts at once, up to the last place, so that there is no room for more.
    set("abcd");
    typeIn("XY");
    EXPECT_EQ(text(), "abcdXfgh");
}

TEST_F(PassTextFieldTest, drawing_blanks_nothing_so_stars_of_a_longer_text_stay) {
    typeIn("abcd");
    set("a");
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
