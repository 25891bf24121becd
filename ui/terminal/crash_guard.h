#pragma once

/// Gives the terminal back when the program crashes.

/// From now on a crash (SIGSEGV, SIGABRT and their like, a stack that has overflown included) or
/// any other signal that ends a program by default on every system, as SIGQUIT and SIGALRM, first
/// takes the terminal out of curses' hands: the normal screen, a visible cursor, plain text and the
/// modes that it had; a terminal that takes no output gets its modes at least. Then the signal
/// takes the course that it would have taken, but that process 1, which the kernel would have go
/// on, ends with status 128 + n; one that was ignored stays so. A child process of the program only
/// ends. To be called once curses is started. The handler makes only calls that are safe in the
/// middle of anything (signal-safety(7)).
void guard_terminal_against_crashes();
