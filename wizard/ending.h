#pragma once

#include "wizard/base/screen_state.h"

/// How the wizard ends: each way has its own order, words and exit status.

/// Ends a wizard whose screens have come to `end`, and returns the program's exit status: 0 after
/// the summary of what has been applied, or the words of an abort when the user has left; 1 without
/// a word when the server did not let the wizard in. The terminal is given back, the widgets are
/// released, and but for a completed run the server is stopped. Without memory it only gives the
/// terminal back, and returns 0.
int end_wizard(WizardEnd end);

/// Ends a wizard whose terminal is too small, which it says. Returns the exit status, 0.
int refuse_terminal();

/// The handler of SIGINT, SIGTERM and SIGHUP: releases the widgets, stops the server if its process
/// id is known, gives the terminal back, says that the wizard was aborted and ends the program with
/// status 1.
[[noreturn]] void abort_wizard(int signal_number);

/// Prints to standard output, after curses has been closed, where to log in: the URLs of the
/// WebAdmin interface on the interface that was chosen, or on each one where all were.
void print_summary();

/// Deletes every widget that exists, the root frame last, and the lists of the host's interfaces
/// and networks. Leaves every pointer null: a second call does nothing.
void release_screens();
