#pragma once

#include <cstdio>

/// The working copy "temp.cfg" in the current directory, into which a file is rewritten before it
/// is copied over the file.

/// Opens the file `path`, which is to be rewritten, for reading and writing; null when that fails
/// or when it is no regular file, reading which might never end.
std::FILE* open_original(const char* path);

/// Creates the working copy for writing, readable by nobody else, in a new private directory where
/// the current one has been removed; null when that fails or when there is something of that name
/// already.
std::FILE* working_copy_open();

/// Closes the working copy, copies it over `path`, whose owner and mode stay, and removes it.
/// Before `path` is changed for the first time the original is kept beside it. Does not touch
/// `path` unless `complete` is set, every byte has been written, the name fits into a command and
/// the original is kept. Returns 0, or 1 when `path` was not touched. What the commands themselves
/// say is not looked at.
int working_copy_install(std::FILE* copy, bool complete, const char* path);
