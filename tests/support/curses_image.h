#pragma once

#include "tests/support/screen_image.h"

/// What curses believes the terminal to show, after the last doupdate(): text, colours, bold and
/// the cursor's place. Curses does not tell whether the cursor is visible; it is taken as such.
/// Needs a running screen (newterm() or initscr()).
ScreenImage read_curses_screen();
