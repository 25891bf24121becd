#pragma once

/// The steps of start-up, in the order in which main() calls them.

/// Opens those of the descriptors 0 to 2 that are closed on /dev/null, so that no file or
/// connection of the wizard's takes the place of a standard stream, its own or its children's.
void fill_standard_descriptors();

/// Installs the handlers of the signals that the wizard handles, and keeps the signals back but
/// where it waits (signal_gate.h).
void hold_signals();

/// Sees to it that child processes are waited for and find none of the files that are open now but
/// the standard streams; raises the limit of open files, and forbids core dumps.
void prepare_process();

/// Starts curses on the terminal. Returns false, with messages on standard error and output, when
/// it can't be started.
bool start_curses();

/// Defines the colours, draws the background and makes `main_window`.
void make_main_window();

/// Sends the standard error stream, of child processes too, to /dev/null: it would garble the
/// screen.
void silence_standard_error();

/// Whether the user and group ids are both 0.
bool is_superuser();

/// Tells the user that only a superuser may run the wizard, and closes curses. Returns the
/// program's exit status.
int refuse_user();
