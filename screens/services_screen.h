#pragma once

#include "screens/screen.h"

/// Which of POP3, IMAP and WebMail to enable, and so which of their screens are shown. All three
/// are ticked at first.
extern Screen services_screen;

/// Builds the screen, hidden.
void services_screen_create();

/// screen_redraw() of this screen.
void services_screen_redraw();

/// Shows the screen until a button has been pressed. Only "Next" stores the choices; the check
/// boxes keep what was ticked either way.
void services_screen_entry();
