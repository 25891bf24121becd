#pragma once

/// Where "Next" leads from the screen of `state` (0 to 9). The sendmail screen has no next screen.
int next_screen_state(int state);

/// Where "Back" leads from the screen of `state` (1 to 10).
int previous_screen_state(int state);

/// Where the walk goes on from SMTP (4), from the services screen (5) or from a listener screen
/// (6 to 8): from SMTP to the services screen, otherwise to the first enabled one of POP3, IMAP and
/// WebMail behind `state`, or to the relay screen where none is.
int next_listener_state(int state);

/// Where the walk goes back to from SMTP (4), a listener screen (6 to 8) or the relay screen (9):
/// from SMTP to WebAdmin, otherwise to the last enabled one of POP3, IMAP and WebMail before
/// `state`, or to the services screen where none is.
int previous_listener_state(int state);
