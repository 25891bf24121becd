#pragma once

#include <string>
#include <vector>

#include "tests/support/screen_image.h"

/// Images as text that a person can read. One letter stands for the look of a cell:
///
///     .  default colours            :  the same in bold
///     b  white on blue              B  the same in bold
///     k  white on black             K  the same in bold
///     r  black on red               R  the same in bold
///
/// A space has the small letter of its background. Any other look gets a digit, then a capital, in
/// the order in which it appears, up to 33 of them.

/// The looks, one letter for a cell, each row with a newline.
std::string colour_letters(const ScreenImage& image);

/// The whole image, in the format of the golden files: the rows of the picture, each closed by "|";
/// the line "colours" and the rows of looks; "cursor ROW,COL" or "cursor hidden"; the letters used
/// with their meanings. Images look the same if and only if their texts are.
std::string to_text(const ScreenImage& image);

/// Two texts next to each other as "expected" and "drawn", lines that differ marked with "!".
std::string side_by_side(const std::string& expected, const std::string& drawn);

/// Cuts a text into its lines. A newline at the very end starts no further line.
std::vector<std::string> split_lines(const std::string& text);
