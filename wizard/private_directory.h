#pragma once

/// The directory that the wizard works in: one of its own that nobody else can look or write into,
/// so that working copies of the server's files can neither be read, nor exchanged, nor be a link
/// that somebody has prepared.

/// Makes the directory (mode 700) below /tmp, /var/tmp or /run and makes it the current one. It is
/// removed, with a working copy that may be in it, when the program ends through exit(3). Where
/// none can be made the current directory stays what it is. Once it has been removed by somebody, a
/// second call makes another one.
void enter_private_directory();

/// In a child process: goes back to the directory that the wizard was started in.
void leave_private_directory_in_child();
