#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "tests/support/screen_image.h"

/// A screen as an SVG drawing, inside a frame that looks like a terminal's window: the colours of
/// the cells, lines drawn as lines so that no font can break them, and each word held to its
/// columns. `title` is what it is called where it can't be seen. The same image gives the same
/// bytes. std::invalid_argument for a colour beyond the eight usual ones.
std::string svg_of(const ScreenImage& image, const std::string& title);

/// A screen, and for how long it is seen.
struct Frame {
    ScreenImage image;
    std::chrono::milliseconds time;
};

/// Screens of one size that follow each other, again and again, drawn as svg_of draws one. Who
/// wants nothing to move, or has a viewer in which nothing does, sees the first.
std::string moving_svg_of(const std::vector<Frame>& frames, const std::string& title);
