#include "ui/text_field.h"

#include <string>

#include "tests/ui/ui_test.h"
#include "ui/label.h"
#include "wizard/base/heap_text.h"

namespace {

/// A field, of text or for a password, that takes 8 characters and shows 5 of them.
class FieldTest : public UiTest {
  protected:
    explicit FieldTest(bool for_password = false) : forPassword(for_password), owned(make(2)) {
        field.setColors(2, 2, 1);
        field.draw();
    }

    std::unique_ptr<TextField> make(int row, int height = 1) {
        if (forPassword) return std::make_unique<PassTextField>(root(), row, 3, 8, 5, height);
        return std::make_unique<TextField>(root(), row, 3, 8, 5, height);
    }

    void type(const std::string& characters) {
        for (const char character : characters) {
            const int key = static_cast<unsigned char>(character);
            EXPECT_EQ(field.onKey(key), key);
        }
    }

    void set(const char* text) {
        field.setText(text);
        field.draw();
    }

    std::string text() const { return HeapText(field.getText()).get(); }

    /// What the field shows, without the spaces at its end, and in which column its cursor stands.
    std::string line() {
        const std::string row = look(field).rowText(0);
        return row.substr(0, row.find_last_not_of(' ') + 1);
    }

    int cursorColumn() const { return cursor_in(field).col; }

    const bool forPassword;
    const std::unique_ptr<TextField> owned;
    TextField& field = *owned;
};

/// What text fields and password fields have in common: the text, whatever the screen shows.
class EveryField : public FieldTest, public testing::WithParamInterface<bool> {
  protected:
    EveryField() : FieldTest(GetParam()) {}

    /// What the field shows where one of text shows `line`.
    std::string echoed(const std::string& line) const {
        return forPassword ? std::string(line.size(), '*') : line;
    }
};

INSTANTIATE_TEST_SUITE_P(Fields, EveryField, testing::Bool(), [](const auto& for_password) {
    return std::string(for_password.param ? "PassTextField" : "TextField");
});

/// Bytes typed, the text that they make, what a field shows and where the cursor stands.
struct Typed {
    const char* keys;
    const char* text;
    const char* line;
    int cursor;
};

const Typed typed_texts[] = {
    {"", "", "", 0},
    {"ab", "ab", "ab", 2},
    {"abcde", "abcde", "abcde", 5},
    {"abcdefg", "abcdefg", "cdefg", 5},
    {"abcdefghij", "abcdefgh", "defgh", 5},
    {"abcdefghij\bz", "abcdefgz", "defgz", 5},
    {"\b", "", "", 0},
    {"\ba", "a", "a", 1},
    {"abc\b", "ab", "ab", 2},
    {"abc\x7f", "ab", "ab", 2},
    {"abc\b\b\b\b", "", "", 0},
    {"abc\bz", "abz", "abz", 3},
    {"abcde\b", "abcd", "abcd", 4},
    {"abcdef\b", "abcde", "abcde", 5},
    {"abcdefgh\b", "abcdefg", "cdefg", 5},
    {"abcdefgh\b\b", "abcdef", "bcdef", 5},
    {"a\t\n\r\x1b\a\x1f", "a", "a", 1},
    {"\xc3\xa9\xff", "", "", 0},
    {"%s%d%", "%s%d%", "%s%d%", 5},
};

TEST_P(EveryField, shows_what_is_typed_and_a_fresh_drawing_shows_the_same) {
    for (const Typed& typed : typed_texts) {
        while (!text().empty()) field.onKey(KEY_BACKSPACE);
        type(typed.keys);
        EXPECT_EQ(text(), typed.text) << typed.keys;
        EXPECT_EQ(line(), echoed(typed.line)) << typed.keys;
        EXPECT_EQ(cursorColumn(), typed.cursor) << typed.keys;
        field.draw();
        field.placeCursor();
        EXPECT_EQ(line(), echoed(typed.line)) << typed.keys;
        EXPECT_EQ(cursorColumn(), typed.cursor) << typed.keys;
    }
}

TEST_P(EveryField, is_as_high_as_it_was_made_and_one_column_wider_than_what_it_shows) {
    const auto high = make(5, 2);
    EXPECT_EQ(size_of(*high), (Position{2, 6}));
    EXPECT_TRUE(is_keypad(high->getCursesWindow()));
    EXPECT_TRUE(high->showsCursor());
    high->setText("abc");
    EXPECT_PICTURE(drawn(*high), echoed("abc") + "\n\n");
}

TEST_P(EveryField, is_drawn_in_its_colours) {
    type("abc");
    EXPECT_COLOURS(look(field), "BBBbbb");
    EXPECT_COLOURS(drawn(field), "BBBbbb");
}

TEST_P(EveryField, every_printable_character_enters_the_text_and_a_backspace_key_removes_it) {
    for (char character = ' '; character <= '~'; ++character) {
        type({character});
        EXPECT_EQ(text(), std::string(1, character));
        EXPECT_EQ(field.onKey(KEY_BACKSPACE), KEY_BACKSPACE);
        EXPECT_EQ(text(), "");
    }
    mvwaddch(field.getCursesWindow(), 0, 0, '!');
    field.onKey(KEY_BACKSPACE);
    EXPECT_EQ(line(), "!");
}

TEST_P(EveryField, cursor_and_function_keys_are_returned_and_do_nothing) {
    type("a");
    // The last but one would be an "a" if only its low byte counted.
    for (const int key :
         {KEY_UP, KEY_DOWN, KEY_LEFT, KEY_RIGHT, KEY_HOME, KEY_DC, KEY_F(1), 256 + 'a', ERR}) {
        EXPECT_EQ(field.onKey(key), key);
        EXPECT_EQ(text(), "a");
        EXPECT_EQ(line(), echoed("a"));
        EXPECT_EQ(cursorColumn(), 1);
    }
}

TEST_P(EveryField, set_text_takes_more_than_the_longest_accepted_and_keys_only_shorten_it) {
    const std::string long_text(200, 'x');
    set((long_text + "yz").c_str());
    type("a");
    EXPECT_EQ(text(), long_text + "yz");
    field.onKey(KEY_BACKSPACE);
    EXPECT_EQ(text(), long_text + "y");
}

TEST_P(EveryField, has_room_for_the_longest_accepted_after_a_short_text_was_set) {
    field.setText("");
    set("a");
    field.setText(nullptr);
    type("bcdefghij");
    EXPECT_EQ(text(), "abcdefgh");
}

TEST_P(EveryField, marks_its_label_while_it_has_the_focus_if_it_has_one) {
    Label label(root(), 5, 3, "Port:");
    label.setColors(2, 2, 1);
    field.setFocused(true);
    EXPECT_COLOURS(drawn(label), "BBBBB");
    field.setLabel(&label);
    field.setFocused(true);
    EXPECT_COLOURS(drawn(label), "KKKKB");
    field.setFocused(false);
    EXPECT_COLOURS(drawn(label), "BBBBB");
}

using TextFieldTest = FieldTest;

TEST_F(TextFieldTest, set_text_replaces_the_text_and_shows_it_when_drawn) {
    type("old text");
    field.setText("new");
    EXPECT_EQ(text(), "new");
    EXPECT_EQ(line(), " text");
    field.placeCursor();
    EXPECT_EQ(cursorColumn(), 3);
    field.draw();
    EXPECT_EQ(line(), "new");
    type("er");
    EXPECT_EQ(line(), "newer");
    EXPECT_EQ(text(), "newer");
    set("abcdefg");
    EXPECT_EQ(line(), "cdefg");
}

class PassTextFieldTest : public FieldTest {
  protected:
    PassTextFieldTest() : FieldTest(true) {}
};

TEST_F(PassTextFieldTest, set_text_counts_its_characters_only_when_drawn) {
    field.setText("secret");
    field.onKey(KEY_BACKSPACE);
    EXPECT_EQ(line(), "");
    field.placeCursor();
    EXPECT_EQ(cursorColumn(), 0);
    field.draw();
    EXPECT_EQ(line(), "*****");
    field.placeCursor();
    EXPECT_EQ(cursorColumn(), 5);
}

TEST_F(PassTextFieldTest, keys_before_the_next_drawing_go_by_the_old_count) {
    type("a");
    field.setText("secret");
    type("X");
    EXPECT_EQ(text(), "sXcret");
}

TEST_F(PassTextFieldTest, a_character_typed_after_a_shortened_text_uncovers_what_stood_there) {
    field.setText("abcdefgh");
    set("ab");
    type("X");
    EXPECT_EQ(text(), "abXdefgh");
    EXPECT_EQ(line(), "*****");
    // It counts at once, up to the last place, so that there is no room for more.
    set("abcd");
    type("XY");
    EXPECT_EQ(text(), "abcdXfgh");
}

TEST_F(PassTextFieldTest, drawing_blanks_nothing_so_stars_of_a_longer_text_stay) {
    type("abcd");
    set("a");
    EXPECT_EQ(line(), "****");
    EXPECT_EQ(cursorColumn(), 1);
}

}  // namespace
