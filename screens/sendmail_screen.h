#pragma once

#include "screens/screen.h"

/// The last screen: whether the server's sendmail wrapper replaces the system's sendmail.
extern Screen sendmail_screen;

/// Builds the screen, hidden.
void sendmail_screen_build();

/// screen_redraw() of this screen.
void sendmail_screen_redraw();

/// Shows the screen and runs it until a button has been pressed. "Yes" and "No" store the answer
/// and apply all of the settings.
void sendmail_screen_run();
