#pragma once

#include <curses.h>
#include <gtest/gtest.h>

#include <memory>

#include "tests/support/curses_terminal.h"
#include "tests/support/expect_screen.h"
#include "ui/window.h"

/// What a widget or dialog finds when the program runs: curses on a terminal, which is also the
/// standard input, the root frame over it, its size measured, the first screen on. The terminal is
/// black; what a widget paints stands out in its colours.
///
/// A test that waits for a key that nobody types ends when patience() is over, by SIGALRM.
class UiTest : public testing::Test {
  protected:
    explicit UiTest(int rows = 24, int cols = 80);
    ~UiTest() override;

    /// The root frame, as `main_window`.
    Window* root() const { return rootFrame.get(); }

    /// The terminal after everything drawn has been brought onto it; the cursor where the widget
    /// drawn last has left it.
    ScreenImage shown();

    /// The part where a window stands; drawn anew first, or as it is.
    ScreenImage drawn(Window& window);
    ScreenImage look(const Window& window);

    /// Gives the terminal another size, which curses and the wizard take over.
    void resizeTo(int rows, int cols);

    CursesTerminal terminal;

  private:
    std::unique_ptr<Window> rootFrame;
};

/// How many panels are on the screen; 0 where every widget has gone.
int panels_shown();

/// Where a window stands in its parent, and what its curses window measures.
Position place_of(const Window& window);
Position size_of(const Window& window);

/// Where curses' cursor stands in a window.
Position cursor_in(const Window& window);
