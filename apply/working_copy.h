#pragma once

#include <cstdio>

/// The working copy "temp.cfg" in the current directory, into which a file is rewritten before it
/// is copied over the file.

/// Opens an empty working copy for writing; null when that fails.
std::FILE* working_copy_open();

/// Closes the working copy, copies it over `path`, whose owner and mode stay, and removes it. Does
/// not touch `path` unless `complete` is set, every byte has been written and the name fits into a
/// command. Returns 0, or 1 when `path` was not touched. What the commands themselves say is not
/// looked at.
int working_copy_install(std::FILE* copy, bool complete, const char* path);
