#pragma once

#include "screens/screen.h"

/// The second screen: the primary domain, where the server keeps it, and the password of its
/// postmaster account.
extern Screen domain_screen;

/// Builds the screen, hidden, with the host's own domain as the answer to start from.
void domain_screen_create();

/// Shows the screen until a button has been pressed. "Next" stores the answers and goes on when
/// none is empty. Until the user has typed into it, the location follows the domain.
void domain_screen_entry();
