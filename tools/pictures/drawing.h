#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/screen_image.h"

/// A cell of a drawing, in pixels.
constexpr int cell_width = 8;
constexpr int cell_height = 18;

/// What is drawn later covers what was drawn before.
enum class Layer { ground, blocks, lines, words, cursor };

/// A layer, and the attributes that its elements have in common, each after a space.
using Place = std::pair<Layer, std::string>;

/// The SVG elements of a screen, each a line.
using Drawing = std::map<Place, std::vector<std::string>>;

/// Elements of one layer do not overlap. std::invalid_argument for a colour beyond the eight usual
/// ones.
Drawing drawing_of(const ScreenImage& image);

/// A text as it may stand between tags and in attributes.
std::string escaped(const std::string& text);
