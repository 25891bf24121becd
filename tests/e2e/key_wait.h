#pragma once

#include <sys/types.h>

/// Whether the wizard of this pid has done everything there was to do and now waits: it sleeps with
/// its signals let in, none of them has still to be answered, and nothing that was typed is unread.
/// All that it had to draw is then on its way to the terminal. False once the process has ended.
///
/// A resize swallows keys that are waiting to be read; a test that waits for this after a resize
/// types nothing that gets lost.
bool waits_for_key(pid_t wizard);
