#include "tests/support/curses_terminal.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <string>
#include <utility>

#include "tests/support/expect_screen.h"

namespace {

/// A frame with bold lines and text, as the dialogs have.
void draw_frame(int row, int col) {
    WINDOW* window = newwin(4, 16, row, col);
    wbkgd(window, static_cast<chtype>(COLOR_PAIR(2)) | A_BOLD);
    box(window, 0, 0);
    mvwaddstr(window, 1, 2, "Error!");
    wattrset(window, COLOR_PAIR(3));
    mvwaddstr(window, 2, 2, "red");
    wattrset(window, static_cast<int>(COLOR_PAIR(1)));
    mvwaddstr(window, 2, 6, "black");
    wnoutrefresh(stdscr);
    wrefresh(window);
    delwin(window);
}

TEST(CursesTerminal, leaves_curses_as_the_program_has_it_whatever_the_environment_says) {
    setenv("LINES", "50", 1);
    setenv("COLUMNS", "100", 1);
    CursesTerminal terminal(20, 72);
    EXPECT_EQ(LINES, 20);
    EXPECT_EQ(COLS, 72);
    EXPECT_TRUE(is_keypad(stdscr));
    EXPECT_FALSE(terminal.modes().echo());
    EXPECT_FALSE(terminal.modes().canonical());
    EXPECT_TRUE(terminal.alternateScreen());
    endwin();
    EXPECT_FALSE(terminal.alternateScreen());
    EXPECT_TRUE(terminal.modes().echo());
}

TEST(CursesTerminal, shows_what_has_been_sent_and_whether_the_cursor_is_visible) {
    CursesTerminal terminal;
    mvaddstr(0, 0, "later");
    EXPECT_FALSE(terminal.image().shows("later"));
    move(3, 6);
    refresh();
    EXPECT_TRUE(terminal.image().shows("later"));
    EXPECT_EQ(terminal.image().cursor().position, (Position{3, 6}));
    EXPECT_TRUE(terminal.image().cursor().visible);
    curs_set(0);
    EXPECT_FALSE(terminal.image().cursor().visible);
}

TEST(CursesTerminal, reads_typed_characters_and_keys_in_order_without_waiting) {
    CursesTerminal terminal;
    nodelay(stdscr, TRUE);
    for (int round = 0; round < 100; ++round) {
        terminal.type("aB ");
        for (const Key key :
             {Key::tab, Key::enter, Key::up, Key::backspace, Key::backspace_as_8, Key::del})
            terminal.press(key);
        for (const int key : {int{'a'}, int{'B'}, int{' '}, int{'\t'}, int{'\n'}, KEY_UP,
                              KEY_BACKSPACE, 8, KEY_DC, ERR})
            ASSERT_EQ(wgetch(stdscr), key) << keyname(key);
    }
}

TEST(CursesTerminal, more_output_than_a_terminal_buffers_does_not_block) {
    CursesTerminal terminal(60, 200);
    for (int round = 0; round < 10; ++round) {
        for (int cell = 0; cell < LINES * COLS - 1; ++cell)
            mvaddch(cell / COLS, cell % COLS, static_cast<chtype>('a' + (cell * 7 + round) % 26));
        refresh();
    }
    EXPECT_GT(terminal.outputBytes().size(), 100000U);
    EXPECT_TRUE(terminal.image().shows("jqxelszgnubip"));
}

TEST(CursesTerminal, a_resize_reaches_curses_when_the_code_under_test_starts_it_anew) {
    CursesTerminal terminal(24, 80);
    refresh();
    for (const auto& [rows, cols] : {std::pair(60, 200), std::pair(20, 72), std::pair(25, 73)}) {
        terminal.resize(rows, cols);
        clear();
        endwin();
        refresh();
        EXPECT_EQ(LINES, rows);
        EXPECT_EQ(COLS, cols);
        mvaddstr(rows - 1, cols - 7, "corner");
        refresh();
        EXPECT_EQ(terminal.image().find("corner"), (Position{rows - 1, cols - 7}));
    }
}

volatile std::sig_atomic_t signals_seen = 0;

TEST(CursesTerminal, leaves_signals_to_the_test) {
    const auto before = std::signal(SIGWINCH, [](int) { signals_seen = signals_seen + 1; });
    const CursesTerminal terminal;
    std::raise(SIGWINCH);
    EXPECT_EQ(signals_seen, 1);
    EXPECT_NE(std::signal(SIGWINCH, before), SIG_DFL);
    EXPECT_EQ(std::signal(SIGINT, SIG_DFL), SIG_DFL);
}

TEST(CursesTerminal, that_is_not_known_throws_and_leaves_room_for_another) {
    EXPECT_THROW(CursesTerminal(24, 80, "no-such-terminal"), std::runtime_error);
    EXPECT_THROW(CursesTerminal(24, 80, "xterm", "xx_XX.none"), std::runtime_error);
    for (const int cols : {72, 80}) {
        const CursesTerminal terminal(24, cols);
        EXPECT_EQ(COLS, cols);
    }
}

/// Each kind of terminal in each locale.
TEST(CursesTerminalKinds, show_the_same_picture) {
    for (const char* term : {"xterm-256color", "xterm", "linux", "screen-256color", "tmux-256color",
                             "rxvt", "vt220"}) {
        for (const char* locale : {"C.UTF-8", "C"}) {
            SCOPED_TRACE(std::string(term) + " in " + locale);
            CursesTerminal terminal(20, 72, term, locale);
            draw_frame(5, 20);
            EXPECT_PICTURE(terminal.image().region(5, 20, 4, 16), R"(
┌──────────────┐
│ Error!       │
│ red black    │
└──────────────┘
)");
            EXPECT_COLOURS(terminal.image().region(6, 20, 2, 16), has_colors() ? R"(
BbBBBBBBbbbbbbbB
BbRRRbKKKKKbbbbB
)"
                                                                               : R"(
:.::::::.......:
:.:::.:::::....:
)");
            terminal.press(Key::down);
            EXPECT_EQ(wgetch(stdscr), KEY_DOWN);
        }
    }
}

}  // namespace
