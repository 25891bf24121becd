#pragma once

#include "tests/support/curses_terminal.h"

/// Curses on a terminal of its own with the wizard's background and root frame, for code that shows
/// boxes.
class CursesScreen {
  public:
    explicit CursesScreen(int rows = 24, int cols = 80);
    ~CursesScreen();
    CursesScreen(const CursesScreen&) = delete;
    CursesScreen& operator=(const CursesScreen&) = delete;

    CursesTerminal terminal;
};
