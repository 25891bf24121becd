#pragma once

#include <cstddef>
#include <cstdio>

/// The most bytes of a line that are read at a time; a longer line comes in pieces.
constexpr std::size_t file_line_limit = 255;

/// A line, or a piece of a long one, of a file that is copied. It may hold zero bytes; a terminator
/// always follows. There is room for a little more than can be read, for lines that are rewritten.
struct FileLine {
    char text[file_line_limit + 17] = {};
    std::size_t length = 0;
};

/// Reads up to and including the next line feed, at most file_line_limit bytes, letting signals in
/// before: a file may have lines for minutes. Returns false, with `line` as it was, when nothing
/// could be read.
bool read_file_line(std::FILE* file, FileLine& line);

/// Writes the line. Returns false when that failed.
bool write_file_line(std::FILE* file, const FileLine& line);
