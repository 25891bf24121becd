#include "tests/screens/moved_picture.h"

#include <algorithm>

#include "wizard/terminal_session.h"

namespace {

Position place_of_frame(const ScreenFacts& screen, const Size& size) {
    return {(size.rows - screen.centring_rows) / 2, (size.cols - screen.cols) / 2};
}

}  // namespace

ScreenImage background(const Size& size) {
    CursesTerminal terminal(size.rows, size.cols);
    draw_background();
    curs_set(0);
    refresh();
    return terminal.image();
}

ScreenImage moved(const ScreenImage& picture, const ScreenFacts& screen, const Size& size) {
    const Position from = place_of_frame(screen, usual);
    const Position to = place_of_frame(screen, size);
    const ScreenImage part = picture.region(from.row, from.col, screen.rows, screen.cols);
    ScreenImage image = background(size);
    for (int row = 0; row < std::min(part.rows(), size.rows - to.row); ++row) {
        for (int col = 0; col < part.cols(); ++col)
            image.cell(to.row + row, to.col + col) = part.cell(row, col);
    }
    const Position& cursor = part.cursor().position;
    image.setCursor({{to.row + cursor.row, to.col + cursor.col}, part.cursor().visible});
    return image;
}
