#pragma once

/// How what curses says reaches the terminal: what it says for a frame is kept back, thinned
/// (OutputThinner, for terminals that speak ECMA-48) and written at once. By itself curses writes
/// whenever it moves the cursor, switches the keypad or hides the cursor, which is to be seen on a
/// slow line.
///
/// Only where standard output is a terminal and the system has nameless files, which may be of any
/// size (ulimit -f): a frame of a large terminal has megabytes. Elsewhere curses writes by itself,
/// and keep_output_back() and send_output() do nothing.

/// Starts curses on standard input and output as newterm(3X) does, for the terminal type in TERM.
/// False if it can't use the terminal, which it then leaves as it was, or can't move its cursor.
bool open_screen();

/// From now on what curses says waits for send_output(). Curses can't change the terminal's modes
/// meanwhile, so this comes behind cbreak(3X) and its like.
void keep_output_back();

/// Writes what has been kept back. To be called before the wizard waits for the user.
void send_output();

/// Shows what has been drawn: update_panels(3X), doupdate(3X), send_output().
void show_frame();

/// Draws everything anew, modes and attributes included, that has been drawn and shown before,
/// whatever the terminal shows now.
void redraw_screen();

/// Leaves the screen to other programs: endwin(3X), behind what has been kept back.
void close_screen();

/// Comes back, with a cleared standard screen, to a terminal that may have another size now, which
/// curses takes, and other modes: clear(3X), endwin(3X), refresh(3X). After close_screen() too.
void renew_screen();
