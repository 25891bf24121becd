#pragma once

#include <string>

#include "tests/support/screen_image.h"

/// The words of a screen as SVG: each begins in its column, whatever the font, and is stretched to
/// as many columns as it has characters.
std::string word_runs(const ScreenImage& image);
