#include "tests/e2e/frame.h"

#include <sstream>
#include <stdexcept>

namespace {

// The first place at or behind `col` of a row that shows `wanted`, -1 where none does.
int col_of(const ScreenImage& screen, int row, int col, const std::string& wanted) {
    while (col < screen.cols() && screen.cell(row, col).text != wanted)
        ++col;
    return col < screen.cols() ? col : -1;
}

int row_of(const ScreenImage& screen, int row, int col, const std::string& wanted) {
    while (row < screen.rows() && screen.cell(row, col).text != wanted)
        ++row;
    return row < screen.rows() ? row : -1;
}

bool is_border(const std::string& text) {
    return text == "│" || text == "─" || text == "┌" || text == "┐" || text == "└" || text == "┘" ||
           text == "├" || text == "┤";
}

}  // namespace

Frame frame_on(const ScreenImage& screen) {
    const std::optional<Position> corner = screen.find("┌");
    if (!corner)
        throw std::runtime_error("there is no frame on the screen");
    const int right = col_of(screen, corner->row, corner->col, "┐");
    const int bottom = row_of(screen, corner->row, corner->col, "└");
    if (right < 0 || bottom < 0)
        throw std::runtime_error("the frame on the screen is not whole");
    return {*corner, screen.region(corner->row, corner->col, bottom - corner->row + 1,
                                   right - corner->col + 1)};
}

std::string words_in_frame(const ScreenImage& screen) {
    const ScreenImage frame = frame_on(screen).image;
    std::string text;
    for (int row = 0; row < frame.rows(); ++row) {
        for (int col = 0; col < frame.cols(); ++col) {
            const std::string& character = frame.cell(row, col).text;
            text += is_border(character) ? " " : character;
        }
    }
    std::istringstream words(text);
    std::string joined;
    for (std::string word; words >> word;)
        joined += (joined.empty() ? "" : " ") + word;
    return joined;
}
