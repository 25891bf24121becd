#include "tests/e2e/focus.h"

#include "tests/e2e/frame.h"

namespace {

constexpr int black = 0;
constexpr int red = 1;

// The fields of a screen stand on every other line below its title.
int focused_field(const ScreenImage& screen) {
    constexpr int first_field = 3;
    return (screen.cursor().position.row - frame_on(screen).at.row - first_field) / 2;
}

bool is_button(const Cell& cell) {
    return cell.background == red;
}

bool is_focused(const Cell& cell) {
    return cell.background == black && cell.bold && cell.text != " ";
}

// What is written on a button in the look of the focus from a place on.
std::string caption_at(const ScreenImage& screen, int row, int col) {
    std::string caption;
    while (is_focused(screen.cell(row, col)))
        caption += screen.cell(row, col++).text;
    return caption;
}

}  // namespace

std::string focused_caption(const ScreenImage& screen) {
    for (int row = 0; row < screen.rows(); ++row) {
        for (int col = 1; col < screen.cols(); ++col) {
            if (is_button(screen.cell(row, col - 1)) && is_focused(screen.cell(row, col)))
                return caption_at(screen, row, col);
        }
    }
    return "";
}

int focus_on(const ScreenImage& screen, Stop stop) {
    const StopFacts& facts = facts_of(stop);
    if (screen.cursor().visible)
        return facts.port != nullptr ? 1 : focused_field(screen);
    const std::string caption = focused_caption(screen);
    if (caption.empty())
        return 0;
    if (caption == "No")
        return 1;
    return caption == "Back" || caption == "Exit" ? facts.back : facts.next;
}
