#include "tests/support/screen_text.h"

#include <algorithm>
#include <map>
#include <sstream>
#include <tuple>

namespace {

/// Foreground, background, bold, blank: of a blank only the background can be seen.
using Look = std::tuple<int, int, bool, bool>;

Look look_of(const Cell& cell) {
    if (cell.text == " ") return {default_colour, cell.background, false, true};
    return {cell.foreground, cell.background, cell.bold, false};
}

struct UsualColours {
    char plain;
    char bold;
    int foreground;
    int background;
};

constexpr UsualColours usual_colours[] = {
    {'.', ':', default_colour, default_colour},
    {'b', 'B', 7, 4},
    {'k', 'K', 7, 0},
    {'r', 'R', 0, 1},
};

constexpr char unusual_letters[] = "0123456789ACDEFGHIJLMNOPQSTUVWXYZ";

std::string colour_name(int colour) {
    static const char* const names[] = {"black", "red",     "green", "yellow",
                                        "blue",  "magenta", "cyan",  "white"};
    if (colour == default_colour) return "default";
    return colour < 8 ? names[colour] : "colour " + std::to_string(colour);
}

/// Gives each look its letter and remembers what the letters mean.
class ColourLetters {
  public:
    char letter(const Cell& cell) {
        const Look look = look_of(cell);
        const auto& [foreground, background, bold, blank] = look;
        for (const UsualColours& usual : usual_colours) {
            if (background == usual.background && (blank || foreground == usual.foreground)) {
                return note(bold ? usual.bold : usual.plain,
                            {usual.foreground, usual.background, bold, false});
            }
        }
        const size_t next = std::min(unusual.size(), sizeof unusual_letters - 2);
        return note(unusual.emplace(look, unusual_letters[next]).first->second, look);
    }

    std::string legend() const {
        std::string lines;
        for (const auto& [letter, look] : meanings) {
            const auto& [foreground, background, bold, blank] = look;
            lines += std::string(1, letter) + (bold ? " = bold " : " = ") +
                     (blank ? "blank" : colour_name(foreground)) + " on " +
                     colour_name(background) + "\n";
        }
        return lines;
    }

  private:
    char note(char letter, const Look& look) {
        meanings.emplace(letter, look);
        return letter;
    }

    std::map<Look, char> unusual;
    std::map<char, Look> meanings;
};

std::string colour_rows(const ScreenImage& image, ColourLetters& letters, const char* row_end) {
    std::string rows;
    for (int row = 0; row < image.rows(); ++row) {
        for (int col = 0; col < image.cols(); ++col) rows += letters.letter(image.cell(row, col));
        rows += row_end;
    }
    return rows;
}

size_t columns_of(const std::string& line) {
    const auto is_character = [](char byte) { return (byte & 0xc0) != 0x80; };
    return static_cast<size_t>(std::count_if(line.begin(), line.end(), is_character));
}

std::string padded(const std::string& line, size_t columns) {
    return line + std::string(columns - std::min(columns, columns_of(line)), ' ');
}

std::string cursor_line(const Cursor& cursor) {
    if (!cursor.visible) return "cursor hidden\n";
    return "cursor " + std::to_string(cursor.position.row) + "," +
           std::to_string(cursor.position.col) + "\n";
}

}  // namespace

std::string colour_letters(const ScreenImage& image) {
    ColourLetters letters;
    return colour_rows(image, letters, "\n");
}

std::string to_text(const ScreenImage& image) {
    std::string text;
    for (int row = 0; row < image.rows(); ++row) text += image.rowText(row) + "|\n";
    ColourLetters letters;
    text += "colours\n" + colour_rows(image, letters, "|\n") + cursor_line(image.cursor());
    return text + letters.legend();
}

std::vector<std::string> split_lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

std::string side_by_side(const std::string& expected, const std::string& drawn) {
    std::vector<std::string> left = split_lines(expected);
    std::vector<std::string> right = split_lines(drawn);
    const size_t lines = std::max(left.size(), right.size());
    left.resize(lines);
    right.resize(lines);

    size_t columns = 8;
    for (const std::string& line : left) columns = std::max(columns, columns_of(line));

    std::string text = "  " + padded("expected", columns) + "   drawn\n";
    for (size_t line = 0; line < lines; ++line) {
        const char* mark = left[line] == right[line] ? "  " : "! ";
        text += mark + padded(left[line], columns) + "   " + right[line] + "\n";
    }
    return text;
}
