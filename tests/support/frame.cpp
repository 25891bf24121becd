#include "tests/support/frame.h"

#include <sstream>
#include <stdexcept>

namespace {

bool is_border(const Cell& cell) {
    return !cell.text.empty() && std::string("│─┌┐└┘├┤").find(cell.text) != std::string::npos;
}

bool is_red(const Cell& cell) {
    constexpr int red = 1;
    return cell.background == red;
}

bool is_focused(const Cell& cell) {
    constexpr int black = 0;
    return cell.background == black && cell.bold && cell.text != " ";
}

// The caption of the button, red at its sides, that looks as if it had the focus; empty if none
// does.
std::string focused_caption(const ScreenImage& screen) {
    std::string caption;
    for (int row = 0; row < screen.rows() && caption.empty(); ++row) {
        for (int col = 1; col < screen.cols(); ++col) {
            const bool begins = caption.empty() && is_red(screen.cell(row, col - 1));
            if (is_focused(screen.cell(row, col)) && (begins || !caption.empty()))
                caption += screen.cell(row, col).text;
        }
    }
    return caption;
}

}  // namespace

Frame frame_on(const ScreenImage& screen) {
    const std::optional<Position> corner = screen.find("┌");
    if (!corner) throw std::runtime_error("there is no frame on the screen");
    int right = corner->col;
    while (right < screen.cols() && screen.cell(corner->row, right).text != "┐") ++right;
    int bottom = corner->row;
    while (bottom < screen.rows() && screen.cell(bottom, corner->col).text != "└") ++bottom;
    if (right == screen.cols() || bottom == screen.rows())
        throw std::runtime_error("the frame on the screen is not whole");
    return {*corner, screen.region(corner->row, corner->col, bottom - corner->row + 1,
                                   right - corner->col + 1)};
}

std::string words_in_frame(const ScreenImage& screen) {
    const ScreenImage frame = frame_on(screen).image;
    std::string text;
    for (int row = 0; row < frame.rows(); ++row) {
        for (int col = 0; col < frame.cols(); ++col)
            text += is_border(frame.cell(row, col)) ? " " : frame.cell(row, col).text;
    }
    std::istringstream words(text);
    std::string joined;
    for (std::string word; words >> word;) joined += (joined.empty() ? "" : " ") + word;
    return joined;
}

int focus_on(const ScreenImage& screen, Stop stop) {
    constexpr int first_field = 3;  // below the top of the frame; a field on every other line
    const StopFacts& facts = facts_of(stop);
    if (screen.cursor().visible && facts.port != nullptr) return 1;
    if (screen.cursor().visible)
        return (screen.cursor().position.row - frame_on(screen).at.row - first_field) / 2;
    const std::string caption = focused_caption(screen);
    if (caption.empty()) return 0;
    if (caption == "No") return 1;
    return caption == "Back" || caption == "Exit" ? facts.back : facts.next;
}
