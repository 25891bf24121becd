#pragma once

/// The terminal, which has one owner: it is opened, drawn on, left and taken again here only.
///
/// What curses says for a frame is kept back, thinned and written at once; by itself curses writes
/// at every move of the cursor, which is to be seen on a slow line. It does write by itself where
/// the system has no nameless files of any size (ulimit -f).
///
/// A terminal that takes nothing (Ctrl-S, a dead line) keeps the wizard waiting, but not from being
/// ended: the signals that end it are let in while it writes. In the background the terminal is
/// somebody else's: the wizard stops before it takes it.

/// Starts curses on standard input and output, for the terminal type in TERM and the character set
/// of the environment. Keys come one by one, without echo. From now on the program gives the
/// terminal back however it ends, crashes included. More than 4,096 rows or columns, told by LINES,
/// COLUMNS or the terminal, are ignored, now and later: curses would take gigabytes, or crash.
/// False, with the terminal as it was, if curses can't use it or can't move its cursor.
bool open_terminal();

/// Defines the colours of ColourPair. To be called once the terminal is open.
void define_colours();

/// Writes what has been kept back; in the background the wizard first stops until it is in the
/// foreground. To be called before the wizard waits for the user. The process sends itself SIGHUP
/// when nobody reads what is written: a pipe without its reader, a terminal that is gone.
void send_output();

/// Shows what has been drawn: update_panels(3X), doupdate(3X), send_output().
void show_frame();

/// Draws everything anew, modes and attributes included, whatever the terminal shows now.
void redraw_terminal();

/// Leaves the terminal to other programs, with the modes that it had: endwin(3X), after what has
/// been kept back. Waits for a terminal that takes nothing. May be called as often as one likes.
void close_terminal();

/// The same for the handler of a signal that ends the wizard, and says `last_words` then; takes a
/// second at most. What the terminal doesn't take stays unsaid.
void close_terminal_in_time(const char* last_words);

/// Sets the wizard's modes again; stops first while the wizard is in the background. Does nothing
/// before the terminal is open. False if a terminal can't be had any more.
bool retake_terminal();

/// Comes back, after close_terminal() too, to a terminal that may have other modes and another
/// size, which curses takes: clear(3X), endwin(3X), refresh(3X). False, with nothing done, if there
/// is no terminal to come back to. Stops while the wizard is in the background.
bool renew_terminal();
