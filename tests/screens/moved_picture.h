#pragma once

#include "tests/support/screen_image.h"

/// What the wizard shows of the frame around all screens, without a screen, on a terminal of that
/// size; the cursor is hidden.
ScreenImage background(int rows, int cols);

/// `ground` with a part of another image put on it at (row, col); the cursor is the part's. What
/// would stand outside of `ground` is left out.
ScreenImage put_on(const ScreenImage& ground, const ScreenImage& part, int row, int col);
