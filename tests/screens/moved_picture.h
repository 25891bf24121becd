#pragma once

#include "tests/screens/screen_facts.h"

constexpr Size smallest = {20, 72};
constexpr Size usual = {24, 80};
constexpr Size large = {60, 200};
// Of which a frame that leaves a row over elsewhere leaves none, and the other way round.
constexpr Size odd = {25, 81};

/// A picture of a screen on a terminal of the usual size, moved to where another size puts it.
ScreenImage moved(const ScreenImage& picture, const ScreenFacts& screen, const Size& size);

/// What the wizard shows of the frame around all screens, without a screen; the cursor is hidden.
ScreenImage background(const Size& size);
