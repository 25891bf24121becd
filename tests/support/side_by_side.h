#pragma once

#include <string>
#include <vector>

/// Two texts line by line next to each other under the headings "expected" and "drawn", each line
/// in which they differ marked with "!" in front.
std::string side_by_side(const std::string& expected, const std::string& drawn);

/// Cuts a text into its lines. A newline at the very end starts no further line.
std::vector<std::string> split_lines(const std::string& text);
