#pragma once

#include <string>

#include "tests/support/screen_image.h"

/// What the parts of a drawing share: the grid of the cells, in pixels, and the colours.

constexpr int cell_width = 8;
constexpr int cell_height = 18;

/// The colours of a cell as SVG names them; std::invalid_argument for one beyond the eight usual
/// ones.
std::string foreground_of(const Cell& cell);
std::string background_of(const Cell& cell);

/// A text as it may stand between tags and in attributes.
std::string escaped(const std::string& text);
