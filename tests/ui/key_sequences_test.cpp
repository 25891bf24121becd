// What keyboards send that the descriptions of their terminals don't have.

#include "ui/terminal/key_sequences.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "tests/support/curses_terminal.h"
#include "ui/keys.h"
#include "ui/window.h"

namespace {

// A terminal of some kind whose sequences are learnt.
class KeySequences : public testing::TestWithParam<const char*> {
  protected:
    KeySequences() { learn_key_sequences(); }

    int keyOf(const std::string& sequence) {
        terminal.type(sequence);
        return read_key(root);
    }

    CursesTerminal terminal{24, 80, GetParam()};
    Window root{stdscr, nullptr};
};

std::string name_of(const testing::TestParamInfo<const char*>& info) {
    std::string name = info.param;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Terminals, KeySequences,
                         testing::Values("xterm-256color", "xterm", "linux", "screen-256color",
                                         "tmux-256color", "vt220", "putty", "rxvt"),
                         name_of);

TEST_P(KeySequences, cursor_keys_are_known_in_both_of_their_modes) {
    for (const char* introducer : {"\033[", "\033O"}) {
        EXPECT_EQ(keyOf(std::string(introducer) + "A"), KEY_UP);
        EXPECT_EQ(keyOf(std::string(introducer) + "B"), KEY_DOWN);
        EXPECT_EQ(keyOf(std::string(introducer) + "C"), KEY_RIGHT);
        EXPECT_EQ(keyOf(std::string(introducer) + "D"), KEY_LEFT);
    }
}

TEST_P(KeySequences, keys_above_the_cursor_keys_are_single_keys) {
    for (const char* sequence : {"\033[H", "\033OH", "\033[F", "\033OF", "\033[1~", "\033[4~",
                                 "\033[7~", "\033[8~", "\033[2~", "\033[3~", "\033[5~", "\033[6~"})
        EXPECT_GT(keyOf(sequence), KEY_MIN) << sequence + 1;
}

TEST_P(KeySequences, digits_of_the_keypad_are_digits) {
    for (int digit = 0; digit <= 9; ++digit)
        EXPECT_EQ(keyOf(std::string("\033O") + static_cast<char>('p' + digit)), '0' + digit);
    EXPECT_EQ(keyOf("\033On"), '.');
}

TEST_P(KeySequences, enter_of_the_keypad_is_enter) {
    EXPECT_EQ(keyOf("\033OM"), key_enter);
}

TEST_P(KeySequences, reports_of_a_mouse_are_single_keys) {
    EXPECT_GT(keyOf("\033[<0;10;10M"), KEY_MIN);
    EXPECT_EQ(keyOf("a"), 'a');
}

TEST(KeySequencesOfDescription, stay_where_they_are_keys_that_the_screens_know) {
    CursesTerminal terminal(24, 80, "vt100");
    define_key("\033[A", KEY_DOWN);
    define_key("\033[D", KEY_BACKSPACE);
    learn_key_sequences();
    EXPECT_EQ(key_defined("\033[A"), KEY_DOWN);
    EXPECT_EQ(key_defined("\033[D"), KEY_BACKSPACE);
}

TEST(KeySequencesOfDescription, give_way_where_no_screen_knows_their_key) {
    CursesTerminal terminal(24, 80, "vt100");
    ASSERT_EQ(key_defined("\033Ot"), KEY_F(5));
    learn_key_sequences();
    EXPECT_EQ(key_defined("\033Ot"), '4');
}

TEST_P(KeySequences, other_keys_stay_what_the_description_says) {
    EXPECT_EQ(keyOf("\t"), key_tab);
    EXPECT_EQ(keyOf("\r"), key_enter);
    EXPECT_EQ(keyOf("\n"), key_enter);
    EXPECT_EQ(keyOf("O"), 'O');
    EXPECT_EQ(keyOf("["), '[');
}

}  // namespace
