#pragma once

#include <curses.h>

#include <string>

/// Starts curses on a terminal of its own that nobody looks at, once a process.
void need_curses();

/// The characters of a row of a window, all of its columns.
std::string row_text(WINDOW* window, int row);
