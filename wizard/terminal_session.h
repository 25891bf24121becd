#pragma once

/// The fixed frame around all screens and the terminal's size.

/// Measures the terminal into `screen_rows` and `screen_cols`. Returns whether it is large enough.
bool check_terminal_size();

/// Draws the title and help lines, each with a ruler, over the standard screen's present size.
void draw_background();

/// The handler of SIGWINCH: takes the terminal's new size and redraws what is on the screen. Each
/// screen concerned, the services, relay and sendmail screens always, swallows one key that is
/// waiting to be read. A message or question that is open is left in no-delay mode. Ends the
/// program by refuse_terminal() when the terminal has become too small; sends SIGHUP instead when
/// it is gone.
void on_resize(int signal_number);

/// The handler of SIGCONT, for a wizard that was stopped without having been asked (SIGSTOP): the
/// terminal has had other users. Takes it, once the wizard is in the foreground, and sends SIGWINCH
/// for the rest.
void continue_wizard(int signal_number);

/// The handler of SIGTSTP: gives the terminal back while the wizard is stopped, and redraws the
/// screen, at the size that the terminal then has, when it goes on. In the background it goes on
/// only to stop again.
void suspend_wizard(int signal_number);
