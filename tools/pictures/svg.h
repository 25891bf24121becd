#pragma once

#include <string>

#include "tests/support/screen_image.h"

/// A screen as an SVG drawing, inside a frame that looks like a terminal's window: the colours of
/// the cells, lines drawn as lines so that no font can break them, and each word held to its
/// columns. `title` is what it is called where it can't be seen. The same image gives the same
/// bytes. std::invalid_argument for a colour beyond the eight usual ones.
std::string svg_of(const ScreenImage& image, const std::string& title);
