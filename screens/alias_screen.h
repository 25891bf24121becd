#pragma once

#include "screens/screen.h"

/// The third screen: which standard aliases the primary domain gets. It is built anew on every
/// visit, as its question names the domain.
extern Screen alias_screen;

/// Builds the screen, shows it until a button has been pressed, and releases it. The choices are
/// kept whichever way the user leaves.
void alias_screen_entry();
