#include "tests/support/curses_terminal.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>

#include "tests/support/expect_screen.h"
#include "tests/support/golden.h"
#include "tests/support/terminal_program.h"
#include "ui/button.h"

namespace {

#include "readme_examples.h"

// The other one needs the wizard: it only has to compile.
TEST(Readme, shows_how_a_widget_is_tested) { example_1(); }

TEST(CursesTerminal, leaves_curses_as_the_program_has_it_whatever_the_environment_says) {
    setenv("LINES", "50", 1);
    setenv("COLUMNS", "100", 1);
    const auto before = std::signal(SIGWINCH, SIG_IGN);
    CursesTerminal terminal(20, 72);
    EXPECT_EQ(std::signal(SIGWINCH, before), SIG_IGN);
    EXPECT_EQ(std::signal(SIGINT, SIG_DFL), SIG_DFL);
    EXPECT_EQ(LINES, 20);
    EXPECT_EQ(COLS, 72);
    EXPECT_TRUE(is_keypad(stdscr));
    EXPECT_FALSE(terminal.modes().echo());
    EXPECT_FALSE(terminal.modes().canonical());
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

}  // namespace
