#pragma once

/// The handler of SIGINT, SIGTERM and SIGHUP: releases the widgets, stops the server if its process
/// id is known, closes curses, says that the wizard was aborted and ends the program with status 1.
[[noreturn]] void abort_wizard(int signal_number);

/// What the "Exit" button of the first screen does: leaves the wizard the same way, but as a normal
/// end with status 0.
[[noreturn]] void exit_wizard();
