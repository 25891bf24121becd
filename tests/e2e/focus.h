#pragma once

#include <string>

#include "tests/support/screen_image.h"
#include "tests/support/screen_table.h"

/// The caption of the button that looks as if it had the focus, on a screen or in a dialog; empty
/// if none does.
std::string focused_caption(const ScreenImage& screen);

/// Which of the controls of a screen, counted in TAB order from 0, looks as if it had the focus: a
/// focused button, the field with the cursor, otherwise the list.
int focus_on(const ScreenImage& screen, Stop stop);
