#include "fuzz/window_text.h"

#include "tests/support/curses_terminal.h"

void need_curses() {
    static const CursesTerminal terminal;
}

std::string row_text(WINDOW* window, int row) {
    std::string text;
    const int row_before = getcury(window);
    const int col_before = getcurx(window);
    for (int col = 0; col < getmaxx(window); ++col)
        text += static_cast<char>(mvwinch(window, row, col) & A_CHARTEXT);
    wmove(window, row_before, col_before);
    return text;
}
