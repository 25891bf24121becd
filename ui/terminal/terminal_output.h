#pragma once

#include <cstddef>

/// How what curses says reaches the terminal: what it says for a frame is kept back, thinned
/// (OutputThinner, for terminals that speak ECMA-48) and written at once. By itself curses writes
/// whenever it moves the cursor, switches the keypad or hides the cursor, which is to be seen on a
/// slow line.
///
/// Only where the system has nameless files, which may be of any size (ulimit -f): a frame of a
/// large terminal has megabytes. Elsewhere curses writes by itself. What standard output is does
/// not matter; only for a terminal anything is thinned.
///
/// A terminal that takes nothing (Ctrl-S, a dead line) keeps the wizard waiting, but not from being
/// ended: the signals that end it are let in while it writes.

/// Remembers the modes of the terminals (ui/terminal/terminals) and starts curses on standard input
/// and output as newterm(3X) does, for the terminal type in TERM. A size of more than 4,096 rows or
/// columns, told by LINES, COLUMNS or the terminal, is ignored, as it is later. False if it can't
/// use the terminal, which it then leaves as it was, or can't move its cursor.
bool open_terminal();

/// From now on what curses says waits for send_output(), and the modes that it has set are kept by
/// the wizard: curses can't change them any more, so this comes behind cbreak(3X) and its like.
void keep_output_back();

/// Writes what has been kept back, in the foreground: stops until the wizard is there. To be called
/// before the wizard waits for the user. The process sends itself SIGHUP when nobody reads what is
/// written: a pipe without its reader, a terminal that is gone.
void send_output();

/// Shows what has been drawn: update_panels(3X), doupdate(3X), send_output().
void show_frame();

/// Draws everything anew, modes and attributes included, that has been drawn and shown before,
/// whatever the terminal shows now.
void redraw_terminal();

/// Writes as much of the text as standard output takes within half a second; whether that was all.
/// Async-signal-safe.
bool write_in_time(const char* text, std::size_t length);

/// Leaves the screen to other programs: endwin(3X), behind what has been kept back; then gives the
/// terminals back. Waits for a terminal that takes nothing.
void close_terminal();

/// The same for the handler of a signal that ends the wizard, and says `farewell` then; takes a
/// second at most. What the terminal doesn't take stays unsaid.
void close_terminal_in_time(const char* farewell);

/// Comes back, with a cleared standard screen, to a terminal that may have another size now, which
/// curses takes, and other modes: clear(3X), endwin(3X), refresh(3X). After close_terminal() too.
/// False, with nothing done, if there is no terminal to come back to. Stops while the wizard is in
/// the background.
bool renew_terminal();
