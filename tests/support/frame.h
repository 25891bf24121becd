#pragma once

#include <string>

#include "tests/support/screen_image.h"
#include "tests/support/screen_table.h"

/// The frame of a screen or dialog, its border included, and where it stands.
struct Frame {
    Position at;
    ScreenImage image;
};

/// The topmost frame on a screen, which must stand there whole; std::runtime_error otherwise.
Frame frame_on(const ScreenImage& screen);

/// The words within the frame on a screen, its title first and its buttons last, with one space
/// between any two: a text however it is broken into lines.
std::string words_in_frame(const ScreenImage& screen);

/// Which of the controls of a screen, counted in TAB order from 0, looks as if it had the focus: a
/// focused button, the field with the cursor, otherwise the list.
int focus_on(const ScreenImage& screen, Stop stop);
