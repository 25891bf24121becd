#pragma once

#include <string>

/// The directory that the wizard works in: one of its own that nobody else can look or write into,
/// so that working copies of the server's files can neither be read, nor exchanged, nor be a link
/// that somebody has prepared.

/// Makes the directory (mode 700) below /run, where only root can write, or else /tmp or /var/tmp;
/// or another one when it has been removed; and makes it the current one. It goes, with a working
/// copy that may be in it, when the program ends through exit(3). Where none can be made the
/// current directory stays what it is.
void enter_private_directory();

/// In a child process: goes back to the directory that the wizard was started in; to the root
/// directory where that can't be opened.
void leave_private_directory_in_child();

/// The absolute path of the file `name` of the directory that the wizard was started in. `name`
/// itself where it is absolute or empty, or where there is no private directory. Empty where the
/// directory's path is gone, or too long for any command.
std::string name_from_start(const std::string& name);
