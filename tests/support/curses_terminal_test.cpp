#include "tests/support/curses_terminal.h"

#include <gtest/gtest.h>
#include <panel.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <csignal>
#include <cstdlib>
#include <string>
#include <thread>
#include <tuple>
#include <utility>

#include "tests/support/expect_screen.h"

namespace {

/// A frame with bold lines and text, as the dialogs have.
void draw_frame(WINDOW* window) {
    wbkgd(window, static_cast<chtype>(COLOR_PAIR(2)) | A_BOLD);
    box(window, 0, 0);
    mvwaddch(window, 2, 0, ACS_LTEE);
    mvwhline(window, 2, 1, ACS_HLINE, getmaxx(window) - 2);
    mvwaddch(window, 2, getmaxx(window) - 1, ACS_RTEE);
    mvwaddstr(window, 1, 2, "Error!");
    wattrset(window, COLOR_PAIR(3));
    mvwaddstr(window, 3, 2, "red");
    wattrset(window, static_cast<int>(COLOR_PAIR(1)));
    mvwaddstr(window, 3, 6, "black");
}

class Panel {
  public:
    Panel(int rows, int cols, int row, int col)
        : curses_window(newwin(rows, cols, row, col)), panel(new_panel(curses_window)) {}
    ~Panel() {
        del_panel(panel);
        delwin(curses_window);
    }
    Panel(const Panel&) = delete;
    Panel& operator=(const Panel&) = delete;

    WINDOW* window() const { return curses_window; }

  private:
    WINDOW* curses_window;
    PANEL* panel;
};

void show() {
    update_panels();
    doupdate();
}

TEST(CursesTerminal, leaves_the_standard_screen_as_the_program_has_it) {
    CursesTerminal terminal(20, 72);
    EXPECT_EQ(LINES, 20);
    EXPECT_EQ(COLS, 72);
    EXPECT_EQ(getmaxy(stdscr), 20);
    EXPECT_EQ(getmaxx(stdscr), 72);
    EXPECT_TRUE(is_keypad(stdscr));
    EXPECT_FALSE(terminal.modes().echo());
    EXPECT_FALSE(terminal.modes().canonical());
}

TEST(CursesTerminal, the_size_does_not_come_from_the_environment) {
    setenv("LINES", "50", 1);
    setenv("COLUMNS", "100", 1);
    const CursesTerminal terminal(21, 73);
    EXPECT_EQ(LINES, 21);
    EXPECT_EQ(COLS, 73);
}

TEST(CursesTerminal, image_shows_text_lines_colours_and_cursor) {
    CursesTerminal terminal;
    const Panel panel(5, 16, 2, 3);
    draw_frame(panel.window());
    wmove(panel.window(), 3, 6);
    show();
    const ScreenImage part = terminal.image().region(2, 3, 5, 16);
    EXPECT_PICTURE(part, R"(
┌──────────────┐
│ Error!       │
├──────────────┤
│ red black    │
└──────────────┘
)");
    EXPECT_COLOURS(part, R"(
BBBBBBBBBBBBBBBB
BbBBBBBBbbbbbbbB
BBBBBBBBBBBBBBBB
BbRRRbKKKKKbbbbB
BBBBBBBBBBBBBBBB
)");
    EXPECT_TRUE(part.cursor().visible);
    EXPECT_EQ(part.cursor().position, (Position{3, 6}));
}

TEST(CursesTerminal, image_holds_only_what_has_been_sent_to_the_terminal) {
    CursesTerminal terminal;
    mvaddstr(0, 0, "later");
    EXPECT_FALSE(terminal.image().shows("later"));
    refresh();
    EXPECT_TRUE(terminal.image().shows("later"));
}

TEST(CursesTerminal, reading_the_image_does_not_disturb_what_is_drawn_next) {
    CursesTerminal terminal;
    mvaddstr(3, 3, "one");
    refresh();
    const ScreenImage first = terminal.image();
    EXPECT_SAME_LOOK(first, terminal.image());
    addstr(" two");
    refresh();
    EXPECT_EQ(terminal.terminalImage().find("one two"), (Position{3, 3}));
    EXPECT_SAME_LOOK(terminal.image(), terminal.terminalImage());
}

TEST(CursesTerminal, image_tells_a_hidden_cursor) {
    CursesTerminal terminal;
    refresh();
    EXPECT_TRUE(terminal.image().cursor().visible);
    curs_set(0);
    EXPECT_FALSE(terminal.image().cursor().visible);
    curs_set(1);
    EXPECT_TRUE(terminal.image().cursor().visible);
}

TEST(CursesTerminal, a_wide_character_stands_in_two_cells_of_both_views) {
    CursesTerminal terminal;
    mvaddstr(0, 0, "日x");
    refresh();
    EXPECT_EQ(terminal.image().find("x"), (Position{0, 2}));
    EXPECT_SAME_LOOK(terminal.image(), terminal.terminalImage());
}

TEST(CursesTerminal, reads_typed_characters_and_keys_in_order_without_waiting) {
    CursesTerminal terminal;
    nodelay(stdscr, TRUE);
    terminal.type("aB ");
    terminal.press(Key::tab);
    terminal.press(Key::enter);
    terminal.press(Key::up);
    terminal.press(Key::backspace);
    terminal.press(Key::backspace_as_8);
    terminal.press(Key::del);
    const int expected[] = {'a', 'B', ' ', '\t', '\n', KEY_UP, KEY_BACKSPACE, 8, KEY_DC, ERR};
    for (const int key : expected)
        EXPECT_EQ(wgetch(stdscr), key) << keyname(key);
}

TEST(CursesTerminal, what_was_typed_is_there_at_once_every_time) {
    CursesTerminal terminal;
    nodelay(stdscr, TRUE);
    for (int round = 0; round < 500; ++round) {
        terminal.type("ab");
        ASSERT_EQ(wgetch(stdscr), 'a');
        ASSERT_EQ(wgetch(stdscr), 'b');
        ASSERT_EQ(wgetch(stdscr), ERR);
    }
}

TEST(CursesTerminal, a_terminal_with_the_other_backspace_gives_127_as_a_character) {
    CursesTerminal terminal(24, 80, "vt220", "C");
    terminal.press(Key::backspace);
    terminal.press(Key::backspace_as_8);
    EXPECT_EQ(wgetch(stdscr), 127);
    EXPECT_EQ(wgetch(stdscr), KEY_BACKSPACE);
}

TEST(CursesTerminal, a_key_can_be_typed_by_another_thread_while_one_is_waited_for) {
    CursesTerminal terminal;
    std::thread typist([&] { terminal.type("z"); });
    EXPECT_EQ(wgetch(stdscr), 'z');
    typist.join();
}

TEST(CursesTerminal, more_output_than_a_terminal_buffers_does_not_block) {
    CursesTerminal terminal(60, 200);
    for (int round = 0; round < 30; ++round) {
        for (int row = 0; row < LINES; ++row) {
            for (int col = 0; col < COLS; ++col)
                mvaddch(row, col, static_cast<chtype>('a' + (row * 7 + col * 3 + round) % 26));
        }
        refresh();
    }
    EXPECT_GT(terminal.outputBytes().size(), 300000U);
    EXPECT_SAME_LOOK(terminal.image(), terminal.terminalImage());
}

TEST(CursesTerminal, output_is_known_as_soon_as_curses_has_written_it) {
    CursesTerminal terminal;
    const size_t before = terminal.outputBytes().size();
    mvaddstr(0, 0, "x");
    refresh();
    const std::string output = terminal.outputBytes();
    EXPECT_GT(output.size(), before);
}

TEST(CursesTerminal, a_resize_reaches_curses_when_the_code_under_test_starts_it_anew) {
    CursesTerminal terminal(24, 80);
    mvaddstr(23, 70, "corner");
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
        EXPECT_EQ(terminal.terminalImage().find("corner"), (Position{rows - 1, cols - 7}));
        EXPECT_SAME_LOOK(terminal.image(), terminal.terminalImage());
    }
}

TEST(CursesTerminal, shows_the_alternate_screen_until_curses_ends) {
    CursesTerminal terminal;
    refresh();
    EXPECT_TRUE(terminal.alternateScreen());
    endwin();
    EXPECT_FALSE(terminal.alternateScreen());
    EXPECT_TRUE(terminal.modes().echo());
    EXPECT_TRUE(terminal.modes().canonical());
}

TEST(CursesTerminal, leaves_signals_to_the_test) {
    struct sigaction before {};
    sigaction(SIGWINCH, nullptr, &before);
    const CursesTerminal terminal;
    struct sigaction after {};
    sigaction(SIGWINCH, nullptr, &after);
    EXPECT_EQ(before.sa_handler, after.sa_handler);
    sigaction(SIGINT, nullptr, &after);
    EXPECT_EQ(after.sa_handler, SIG_DFL);
}

volatile std::sig_atomic_t signals_seen = 0;

TEST(CursesTerminal, a_signal_that_the_test_has_blocked_waits_for_it) {
    const CursesTerminal terminal;
    struct sigaction action {};
    struct sigaction action_before {};
    action.sa_handler = [](int) { signals_seen = signals_seen + 1; };
    sigaction(SIGWINCH, &action, &action_before);
    sigset_t resizes;
    sigset_t mask_before;
    sigemptyset(&resizes);
    sigaddset(&resizes, SIGWINCH);
    sigprocmask(SIG_BLOCK, &resizes, &mask_before);

    kill(getpid(), SIGWINCH);
    sigset_t pending;
    sigpending(&pending);
    EXPECT_TRUE(sigismember(&pending, SIGWINCH));
    EXPECT_EQ(signals_seen, 0);
    sigprocmask(SIG_SETMASK, &mask_before, nullptr);
    EXPECT_EQ(signals_seen, 1);
    sigaction(SIGWINCH, &action_before, nullptr);
}

TEST(CursesTerminal, many_in_one_process_each_start_fresh) {
    for (int round = 0; round < 50; ++round) {
        CursesTerminal terminal(20 + round % 5, 72 + round);
        EXPECT_EQ(COLS, 72 + round);
        const Panel panel(5, 16, 1, 1);
        draw_frame(panel.window());
        show();
        ASSERT_TRUE(terminal.terminalImage().shows("Error!"));
        EXPECT_SAME_LOOK(terminal.image(), terminal.terminalImage());
    }
}

TEST(CursesTerminal, an_unknown_terminal_throws) {
    EXPECT_THROW(CursesTerminal(24, 80, "no-such-terminal"), std::runtime_error);
    EXPECT_THROW(CursesTerminal(24, 80, "xterm", "xx_XX.none"), std::runtime_error);
    const CursesTerminal terminal;
    EXPECT_EQ(LINES, 24);
}

/// Each kind of terminal in each locale.
class CursesTerminalKinds : public testing::TestWithParam<std::tuple<std::string, std::string>> {};

TEST_P(CursesTerminalKinds, curses_and_the_terminal_agree_on_what_is_shown) {
    const auto& [term, locale] = GetParam();
    CursesTerminal terminal(20, 72, term, locale);
    bkgd(COLOR_PAIR(2));
    mvhline(1, 0, '-', COLS);
    mvaddstr(0, 0, "Title");
    {
        const Panel panel(6, 30, 5, 20);
        draw_frame(panel.window());
        show();
        EXPECT_PICTURE(terminal.terminalImage().region(5, 20, 6, 30), R"(
┌────────────────────────────┐
│ Error!                     │
├────────────────────────────┤
│ red black                  │
│                            │
└────────────────────────────┘
)");
        EXPECT_SAME_LOOK(terminal.image(), terminal.terminalImage());
        curs_set(0);
    }
    show();
    mvaddstr(18, 0, "gone");
    refresh();
    EXPECT_FALSE(terminal.image().shows("Error!"));
    EXPECT_SAME_LOOK(terminal.image(), terminal.terminalImage());
    terminal.press(Key::down);
    terminal.press(Key::right);
    terminal.type("ok");
    EXPECT_EQ(wgetch(stdscr), KEY_DOWN);
    EXPECT_EQ(wgetch(stdscr), KEY_RIGHT);
    EXPECT_EQ(wgetch(stdscr), 'o');
}

std::string kind_name(const testing::TestParamInfo<std::tuple<std::string, std::string>>& kind) {
    std::string name = std::get<0>(kind.param) + "_in_" + std::get<1>(kind.param);
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Terminals, CursesTerminalKinds,
                         testing::Combine(testing::Values("xterm-256color", "xterm", "linux",
                                                          "screen-256color", "tmux-256color",
                                                          "vt220", "rxvt"),
                                          testing::Values("C.UTF-8", "C")),
                         kind_name);

}  // namespace
