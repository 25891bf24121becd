#include "tests/support/side_by_side.h"

#include <algorithm>
#include <sstream>

namespace {

size_t columns_of(const std::string& line) {
    const auto is_character = [](char byte) { return (byte & 0xc0) != 0x80; };
    return static_cast<size_t>(std::count_if(line.begin(), line.end(), is_character));
}

std::string padded(const std::string& line, size_t columns) {
    return line + std::string(columns - std::min(columns, columns_of(line)), ' ');
}

}  // namespace

std::vector<std::string> split_lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

std::string side_by_side(const std::string& expected, const std::string& drawn) {
    std::vector<std::string> left = split_lines(expected);
    std::vector<std::string> right = split_lines(drawn);
    const size_t lines = std::max(left.size(), right.size());
    left.resize(lines);
    right.resize(lines);

    size_t columns = 8;
    for (const std::string& line : left)
        columns = std::max(columns, columns_of(line));

    std::string text = "  " + padded("expected", columns) + "   drawn\n";
    for (size_t line = 0; line < lines; ++line) {
        const char* mark = left[line] == right[line] ? "  " : "! ";
        text += mark + padded(left[line], columns) + "   " + right[line] + "\n";
    }
    return text;
}
