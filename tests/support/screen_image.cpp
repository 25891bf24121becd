#include "tests/support/screen_image.h"

#include <ostream>
#include <stdexcept>
#include <tuple>

bool operator==(const Cell& left, const Cell& right) {
    const auto all = [](const Cell& cell) {
        return std::tie(cell.text, cell.foreground, cell.background, cell.bold);
    };
    return all(left) == all(right);
}

bool operator!=(const Cell& left, const Cell& right) { return !(left == right); }

std::ostream& operator<<(std::ostream& out, const Cell& cell) {
    return out << '"' << cell.text << "\" in " << (cell.bold ? "bold " : "") << cell.foreground
               << " on " << cell.background;
}

bool operator==(const Position& left, const Position& right) {
    return left.row == right.row && left.col == right.col;
}

std::ostream& operator<<(std::ostream& out, const Position& position) {
    return out << position.row << "," << position.col;
}

ScreenImage::ScreenImage(int rows, int cols)
    : rowCount(rows), colCount(cols), cells(static_cast<size_t>(rows) * cols) {}

const Cell& ScreenImage::cell(int row, int col) const { return cells[index(row, col)]; }

Cell& ScreenImage::cell(int row, int col) { return cells[index(row, col)]; }

std::string ScreenImage::rowText(int row) const {
    std::string text;
    for (int col = 0; col < colCount; ++col) text += cell(row, col).text;
    return text;
}

std::string ScreenImage::text() const {
    std::string text;
    for (int row = 0; row < rowCount; ++row) {
        const std::string line = rowText(row);
        text += line.substr(0, line.find_last_not_of(' ') + 1) + '\n';
    }
    return text;
}

std::optional<Position> ScreenImage::find(const std::string& wanted) const {
    for (int row = 0; row < rowCount; ++row) {
        const size_t offset = rowText(row).find(wanted);
        if (offset == std::string::npos) continue;
        int col = 0;
        for (size_t bytes = 0; bytes < offset || cell(row, col).text.empty(); ++col)
            bytes += cell(row, col).text.size();
        return Position{row, col};
    }
    return std::nullopt;
}

ScreenImage ScreenImage::region(int row, int col, int rows, int cols) const {
    ScreenImage part(rows, cols);
    for (int r = 0; r < rows; ++r) {
        for (int c = 0; c < cols; ++c) part.cell(r, c) = cell(row + r, col + c);
    }
    const Position at{cursorState.position.row - row, cursorState.position.col - col};
    const bool inside = at.row >= 0 && at.row < rows && at.col >= 0 && at.col < cols;
    part.setCursor({inside ? at : Position{}, inside && cursorState.visible});
    return part;
}

size_t ScreenImage::index(int row, int col) const {
    if (row < 0 || row >= rowCount || col < 0 || col >= colCount) {
        throw std::out_of_range("no cell " + std::to_string(row) + "," + std::to_string(col) +
                                " on a screen of " + std::to_string(rowCount) + " rows and " +
                                std::to_string(colCount) + " columns");
    }
    return static_cast<size_t>(row) * colCount + col;
}
