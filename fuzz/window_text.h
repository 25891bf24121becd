#pragma once

#include <curses.h>

#include <string>

#include "tests/support/curses_terminal.h"

/// Starts curses on a terminal of its own that nobody looks at, once a process.
inline void need_curses() { static const CursesTerminal terminal; }

/// The characters of a row of a window, all of its columns. Leaves the cursor where it is.
inline std::string row_text(WINDOW* window, int row) {
    std::string text;
    const int row_before = getcury(window);
    const int col_before = getcurx(window);
    for (int col = 0; col < getmaxx(window); ++col)
        text += static_cast<char>(mvwinch(window, row, col) & A_CHARTEXT);
    wmove(window, row_before, col_before);
    return text;
}
