#pragma once

#include "screens/screen.h"

/// The first screen: the server's administrator password, typed twice. It alone has an "Exit"
/// button, which leaves the wizard.
extern Screen password_screen;

/// Builds the screen, hidden; curses and `main_window` must be there.
void password_screen_create();

/// Shows the screen until a button has been pressed. "Next" stores the password and goes on when
/// both texts are the same and not empty.
void password_screen_entry();
