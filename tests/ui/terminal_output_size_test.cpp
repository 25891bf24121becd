// What size the screen has, and what becomes of it when the terminal has another.

#include <curses.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <termios.h>
#include <unistd.h>

#include <cstdlib>
#include <utility>

#include "tests/support/pty.h"
#include "tests/ui/terminal_output_test.h"
#include "ui/terminal/terminal_output.h"

namespace {

std::pair<int, int> size() {
    return {getmaxy(stdscr), getmaxx(stdscr)};
}

/// At a size that no terminal has; then it goes on to one that a terminal may have.
void expect_to_keep_its_size(Pty& pty) {
    for (const auto& [rows, cols] : {std::pair(24, 65535), std::pair(4097, 80)}) {
        pty.resize(rows, cols);
        renew_terminal();
        EXPECT_EQ(size(), std::pair(24, 80));
    }
    pty.resize(34, 100);
    renew_terminal();
    EXPECT_EQ(size(), std::pair(34, 100));
}

TEST_F(TerminalOutput, goes_to_a_screen_of_the_new_size_from_then_on) {
    keep_output_back();
    draw(0, "before");
    show();
    news();
    pty.resize(34, 100);
    emulator.resize(34, 100);
    renew_terminal();
    EXPECT_EQ(getmaxy(stdscr), 34);
    EXPECT_EQ(getmaxx(stdscr), 100);
    draw(33, "the new bottom");
    show();
    news();
    EXPECT_EQ(rowText(0), "");
    EXPECT_EQ(rowText(33), "the new bottom");
}

TEST_F(TerminalOutput, of_a_new_size_is_said_in_one_go) {
    keep_output_back();
    show();
    news();
    pty.resize(34, 100);
    renew_terminal();
    EXPECT_EQ(news(), "");
}

TEST_F(TerminalOutput, has_the_keypad_on_when_the_size_has_changed) {
    keep_output_back();
    keypad(stdscr, TRUE);
    show();
    pty.resize(34, 100);
    renew_terminal();
    show();
    news();
    EXPECT_EQ(emulator.keyBytes(Key::up), "\x1bOA");
}

TEST_F(TerminalOutput, finds_the_modes_that_it_needs_when_the_size_changes) {
    keep_output_back();
    const TerminalModes modes_of_curses = pty.modes();
    termios other{};
    tcgetattr(STDIN_FILENO, &other);
    other.c_lflag |= ICANON | ECHO;
    tcsetattr(STDIN_FILENO, TCSANOW, &other);
    renew_terminal();
    EXPECT_EQ(pty.modes(), modes_of_curses);
}

TEST_F(TerminalOutput, keeps_a_size_that_no_terminal_tells) {
    keep_output_back();
    pty.resize(0, 0);
    renew_terminal();
    EXPECT_EQ(getmaxy(stdscr), 24);
    EXPECT_EQ(getmaxx(stdscr), 80);
}

TEST_F(TerminalOutput, keeps_a_size_that_the_environment_prescribes) {
    setenv("LINES", "24", 1);
    keep_output_back();
    pty.resize(34, 100);
    renew_terminal();
    EXPECT_EQ(getmaxy(stdscr), 24);
    EXPECT_EQ(getmaxx(stdscr), 100);
    setenv("COLUMNS", "90", 1);
    renew_terminal();
    EXPECT_EQ(getmaxy(stdscr), 24);
    EXPECT_EQ(getmaxx(stdscr), 90);
}

TEST_F(TerminalOutput, goes_to_a_screen_of_its_size_where_the_environment_prescribes_none) {
    keep_output_back();
    int rows = 30;
    for (const char* value : {"", "0", "-5", "many", "25x", "99999999999"}) {
        setenv("LINES", value, 1);
        pty.resize(++rows, 100);
        renew_terminal();
        EXPECT_EQ(getmaxy(stdscr), rows) << value;
    }
}

TEST_F(TerminalOutputWithoutStore,
       begins_with_the_usual_size_where_the_terminal_tells_one_that_none_has) {
    for (const auto& [rows, cols] : {std::pair(24, 65535), std::pair(4097, 80)}) {
        pty.resize(rows, cols);
        open();
        EXPECT_EQ(size(), std::pair(24, 80));
        endwin();
    }
}

TEST_F(TerminalOutputWithoutStore, has_as_many_rows_and_columns_as_a_terminal_may) {
    pty.resize(4096, 72);
    open();
    EXPECT_EQ(size(), std::pair(4096, 72));
    keep_output_back();
    pty.resize(20, 4096);
    renew_terminal();
    EXPECT_EQ(size(), std::pair(20, 4096));
}

TEST_F(TerminalOutputWithoutStore,
       has_the_size_of_the_terminal_where_the_environment_tells_one_that_none_has) {
    pty.resize(30, 100);
    for (const char* value : {"4097", "65535", "0x2000"}) {
        setenv("LINES", value, 1);
        setenv("COLUMNS", value, 1);
        open();
        EXPECT_EQ(size(), std::pair(30, 100));
        endwin();
    }
}

TEST_F(TerminalOutput, keeps_its_size_where_the_terminal_tells_one_that_none_has) {
    keep_output_back();
    expect_to_keep_its_size(pty);
}

TEST_F(TerminalOutputWithoutStore, keeps_its_size_where_the_terminal_tells_one_that_none_has) {
    limitResource(RLIMIT_FSIZE, 16 << 20);
    open();
    keep_output_back();
    expect_to_keep_its_size(pty);
}

}  // namespace
