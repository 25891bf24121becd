#include "tests/screens/moved_picture.h"

#include <curses.h>

#include <algorithm>

#include "tests/support/curses_terminal.h"
#include "wizard/terminal_session.h"

ScreenImage background(int rows, int cols) {
    CursesTerminal terminal(rows, cols);
    draw_background();
    curs_set(0);
    refresh();
    return terminal.image();
}

ScreenImage put_on(const ScreenImage& ground, const ScreenImage& part, int row, int col) {
    ScreenImage image = ground;
    for (int line = 0; line < std::min(part.rows(), ground.rows() - row); ++line) {
        for (int at = 0; at < std::min(part.cols(), ground.cols() - col); ++at)
            image.cell(row + line, col + at) = part.cell(line, at);
    }
    const Position& cursor = part.cursor().position;
    image.setCursor({{row + cursor.row, col + cursor.col}, part.cursor().visible});
    return image;
}
