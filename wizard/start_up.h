#pragma once

/// The steps of start-up that need curses, the terminal or the standard descriptors; main() calls
/// them in order.

/// Opens those of the descriptors 0 to 2 that are closed on /dev/null, so that no file or
/// connection of the wizard's takes the place of a standard stream, its own or its children's.
void fill_standard_descriptors();

/// Starts curses, checks the terminal's size, defines the colours, draws the background and makes
/// `main_window`. Ends the program with status 1 and a message on standard output when curses
/// can't be started.
void start_curses();

/// Sends the standard error stream, of child processes too, to /dev/null: it would garble the
/// screen.
void silence_standard_error();

/// True for a process whose user and group ids are both 0.
bool is_superuser();

/// Tells the user that only a superuser may run the wizard, and closes curses. Returns the
/// program's exit status.
int refuse_user();
