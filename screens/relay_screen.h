#pragma once

#include "screens/screen.h"

/// Which of the host's networks may relay mail without authentication. All are ticked at first.
extern Screen relay_screen;

/// Builds the screen, hidden, from the host's list of relay networks.
void relay_screen_build();

/// screen_redraw() of this screen.
void relay_screen_redraw();

/// Shows the screen and runs it until a button has been pressed. The choices are kept whichever way
/// the user leaves.
void relay_screen_run();
