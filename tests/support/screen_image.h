#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

/// The colour of a cell whose colour nobody has chosen.
constexpr int default_colour = -1;

/// Any colour given as a red, green and blue value instead of a palette number.
constexpr int direct_colour = 256;

/// One character cell of a terminal screen.
struct Cell {
    std::string text = " ";  // UTF-8; empty in the right half of a wide character
    int foreground = default_colour;
    int background = default_colour;  // 0 to 7 as COLOR_BLACK to COLOR_WHITE, palette to 255
    bool bold = false;
};

bool operator==(const Cell& left, const Cell& right);
bool operator!=(const Cell& left, const Cell& right);
std::ostream& operator<<(std::ostream& out, const Cell& cell);

/// A place on the screen; both start at 0 in the upper left corner.
struct Position {
    int row = 0;
    int col = 0;
};

bool operator==(const Position& left, const Position& right);
std::ostream& operator<<(std::ostream& out, const Position& position);

struct Cursor {
    Position position;
    bool visible = true;
};

/// What a terminal shows, copied at one moment. Lines are box characters, whatever way the program
/// drew them. Images that differ only in what nobody can see, as the foreground of a space, look
/// the same: compare them with EXPECT_SAME_LOOK.
class ScreenImage {
  public:
    /// A blank screen with a visible cursor in the upper left corner.
    ScreenImage(int rows, int cols);

    int rows() const { return rowCount; }
    int cols() const { return colCount; }

    /// The cell at a place inside the screen; std::out_of_range for any other.
    const Cell& cell(int row, int col) const;
    Cell& cell(int row, int col);

    const Cursor& cursor() const { return cursorState; }
    void setCursor(const Cursor& cursor) { cursorState = cursor; }

    /// The characters of a row, spaces at its end included.
    std::string rowText(int row) const;

    /// All rows, each without the spaces at its end and with a newline.
    std::string text() const;

    /// Where `wanted` starts, which must stand within one row; the topmost, then leftmost place.
    std::optional<Position> find(const std::string& wanted) const;

    bool shows(const std::string& wanted) const { return find(wanted).has_value(); }

    /// A part of the screen as an image of its own. A cursor outside of it is hidden in it.
    /// std::out_of_range unless the part lies inside the screen.
    ScreenImage region(int row, int col, int rows, int cols) const;

  private:
    size_t index(int row, int col) const;

    int rowCount;
    int colCount;
    std::vector<Cell> cells;
    Cursor cursorState;
};
