#pragma once

#include <sys/types.h>

#include <string>

namespace standin {

/// Reads the whole file at `path` into `text`. False, with `errno` set, when it can't be read.
bool read_file(const std::string& path, std::string& text);

/// Puts a file with `text` and `mode` at `path` so that a reader sees the old file or the new one,
/// never a part: through "PATH.new" in the same directory, renamed. False, with `errno` set and
/// the old file still there, when that fails.
bool write_file(const std::string& path, const std::string& text, mode_t mode);

/// Adds `text` to the end of the file at `path` in one write; makes the file (mode 600) when there
/// is none. False, with `errno` set, when that fails.
bool append_to_file(const std::string& path, const std::string& text);

}  // namespace standin
