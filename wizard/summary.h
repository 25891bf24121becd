#pragma once

/// Prints to standard output, after curses has been closed, where to log in: the URLs of the
/// WebAdmin interface on the interface that was chosen, or on each one where all were.
void print_summary();
