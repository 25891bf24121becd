#pragma once

#include <curses.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/support/curses_terminal.h"
#include "tests/support/expect_screen.h"
#include "tests/support/wait_until.h"
#include "ui/main_window.h"
#include "wizard/base/screen_state.h"

/// What a widget or dialog finds when the program runs: curses on a terminal, which is also the
/// standard input, the root frame over it, its size measured, the first screen on. The terminal is
/// black; what a widget paints stands out in its colours.
///
/// A test that waits for a key that nobody types ends when patience() is over, by SIGALRM.
class UiTest : public testing::Test {
  protected:
    UiTest() {
        main_window = root();
        screen_rows = getmaxy(stdscr);
        screen_cols = getmaxx(stdscr);
        screen_state = state_password;
        alarm(static_cast<unsigned>(patience().count() / 1000));
    }

    ~UiTest() override {
        alarm(0);
        on_screen = {};
    }

    /// The root frame, as `main_window`.
    Window* root() { return &rootFrame; }

    /// The terminal after everything drawn has been brought onto it; the cursor where the widget
    /// drawn last has left it.
    ScreenImage shown() {
        update_panels();
        doupdate();
        return terminal.image();
    }

    /// The part where a window stands, as it is.
    ScreenImage look(const Window& window) {
        WINDOW* place = window.getCursesWindow();
        return shown().region(getbegy(place), getbegx(place), getmaxy(place), getmaxx(place));
    }

    /// The same, drawn anew first.
    ScreenImage drawn(Window& window) {
        window.draw();
        return look(window);
    }

    /// Gives the terminal another size, which curses and the wizard take over.
    void resizeTo(int rows, int cols) {
        terminal.resize(rows, cols);
        clear();
        endwin();
        refresh();
        screen_rows = rows;
        screen_cols = cols;
    }

    CursesTerminal terminal;

  private:
    Window rootFrame{stdscr, nullptr};
};

/// How many panels are on the screen; 0 where every widget has gone.
inline int panels_shown() {
    int count = 0;
    for (PANEL* panel = panel_above(nullptr); panel != nullptr; panel = panel_above(panel)) ++count;
    return count;
}

/// Where a window stands in its parent, and what its curses window measures.
inline Position place_of(const Window& window) { return {window.getRow(), window.getCol()}; }
inline Position size_of(const Window& window) { return {window.getHeight(), window.getWidth()}; }

/// Where curses' cursor stands in a window.
inline Position cursor_in(const Window& window) {
    return {getcury(window.getCursesWindow()), getcurx(window.getCursesWindow())};
}
