#pragma once

#include <string>

#include "tests/support/screen_image.h"

/// True for a cell that holds a piece of a line, which line_strokes() draws.
bool is_line(const Cell& cell);

/// The lines of a screen, which its cells hold as box characters, as SVG: one stroke for each, from
/// end to end.
std::string line_strokes(const ScreenImage& image);
