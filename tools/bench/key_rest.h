#pragma once

#include <sys/types.h>

/// Whether a program has done all that it had to and waits, for as long as it may take, for a key:
/// no signal or key is still to be answered, and what it has written is on its way to the terminal.
/// One that looks now and then whether something else is to do does not rest. proc(5) tells it, so
/// the program is not disturbed.
bool rests_for_key(pid_t program);
