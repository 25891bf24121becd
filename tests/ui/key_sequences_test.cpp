// What keyboards send that the descriptions of their terminals don't have.

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "tests/support/curses_terminal.h"
#include "ui/keys.h"
#include "ui/terminal/terminal_record.h"
#include "ui/window.h"

namespace {

/// A terminal of some kind whose sequences are learnt.
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

INSTANTIATE_TEST_SUITE_P(Terminals, KeySequences,
                         testing::Values("xterm-256color", "xterm", "linux", "screen-256color",
                                         "tmux-256color", "vt220", "putty", "rxvt"));

TEST_P(KeySequences, are_keys_for_the_cursor_in_both_modes_and_for_the_keypad) {
    const std::pair<const char*, int> sequences[] = {{"\033[A", KEY_UP},
                                                     {"\033OA", KEY_UP},
                                                     {"\033[B", KEY_DOWN},
                                                     {"\033OB", KEY_DOWN},
                                                     {"\033[C", KEY_RIGHT},
                                                     {"\033OC", KEY_RIGHT},
                                                     {"\033[D", KEY_LEFT},
                                                     {"\033OD", KEY_LEFT},
                                                     {"\033On", '.'},
                                                     {"\033OM", key_enter},
                                                     {"\t", key_tab},
                                                     {"\r", key_enter},
                                                     {"\n", key_enter},
                                                     {"O", 'O'},
                                                     {"[", '['}};
    for (const auto& [sequence, key] : sequences) EXPECT_EQ(keyOf(sequence), key) << sequence;
    for (int digit = 0; digit <= 9; ++digit)
        EXPECT_EQ(keyOf(std::string("\033O") + static_cast<char>('p' + digit)), '0' + digit);
}

// Those above the cursor keys, and the report of a mouse.
TEST_P(KeySequences, are_single_keys_where_no_screen_knows_them) {
    for (const char* sequence :
         {"\033[H", "\033OH", "\033[F", "\033OF", "\033[1~", "\033[4~", "\033[7~", "\033[8~",
          "\033[2~", "\033[3~", "\033[5~", "\033[6~", "\033[<0;10;10M"})
        EXPECT_GT(keyOf(sequence), KEY_MIN) << sequence + 1;
    EXPECT_EQ(keyOf("a"), 'a');
}

TEST(KeySequencesOfDescription, stay_where_they_are_keys_that_the_screens_know) {
    CursesTerminal terminal(24, 80, "vt100");
    ASSERT_EQ(key_defined("\033Ot"), KEY_F(5));
    define_key("\033[A", KEY_DOWN);
    define_key("\033[D", KEY_BACKSPACE);
    learn_key_sequences();
    EXPECT_EQ(key_defined("\033[A"), KEY_DOWN);
    EXPECT_EQ(key_defined("\033[D"), KEY_BACKSPACE);
    EXPECT_EQ(key_defined("\033Ot"), '4');
}

}  // namespace
