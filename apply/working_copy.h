#pragma once

#include <cstdio>

/// The working copy "temp.cfg" in the current directory, into which a file is rewritten before it
/// is copied over the file.

/// Opens the file `path`, which is to be rewritten, for reading and writing, if it may be
/// (open_named_file()); null, and errno, when not.
std::FILE* open_original(const char* path);

/// Creates the working copy for writing, readable by nobody else, in a new private directory where
/// the current one has been removed; null when that fails or when there is something of that name
/// already.
std::FILE* working_copy_open();

/// Closes the working copy, copies it over `path`, whose owner and mode stay, and removes it.
/// `original` is what open_original() has opened there; the caller closes it. Before the file is
/// changed for the first time it is kept beside itself. Does not touch it unless all of it could be
/// read, every byte has been written, the name fits into a command and still leads there, and the
/// original is kept. Returns 0; 1 when it was not touched, or when the name leads elsewhere
/// afterwards. What the commands themselves say is not looked at.
int working_copy_install(std::FILE* copy, std::FILE* original, const char* path);
