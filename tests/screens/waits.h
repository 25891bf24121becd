#pragma once

#include <functional>

/// The places where the code under test waits, as hooks: this library's pselect(2) takes the place
/// of the system's. A signal handler would run at these places too, so a hook may do what one does.

/// Is called each time the wizard waits for a key (for something to read on file descriptor 0) and
/// must have typed one when it returns, or throw.
void when_waiting_for_key(std::function<void()> hook);

/// Is called each time the wizard sleeps, before it does.
void when_sleeping(std::function<void()> hook);
