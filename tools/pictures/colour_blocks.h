#pragma once

#include <string>

#include "tests/support/screen_image.h"

/// The backgrounds of a screen's cells as SVG: one rectangle of the colour that most cells have,
/// and on it as few as possible for the others.
std::string colour_blocks(const ScreenImage& image);
