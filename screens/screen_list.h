#pragma once

struct Screen;

/// The screen of a state 0 to 10, built or not. SMTP, POP3, IMAP and WebMail share one.
Screen& screen_of(int state);

/// Builds the screens that exist from the start, hidden. The alias and listener screens are built
/// when they are visited.
void create_screens();

/// After the terminal has been resized: redraws the screen on show, if no dialog is on top, and
/// puts the services, relay and sendmail screens, which exist all the time, in their places.
void redraw_screens();

/// Releases every screen that is built.
void destroy_screens();
