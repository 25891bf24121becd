#pragma once

#include <string>

namespace standin {

/// Writes this process's id and a line feed to the file at `path`, whole or not at all. False, with
/// `errno` set, when that fails.
bool write_pid_file(const std::string& path);

/// Removes the file at `path` if it names this process; the file of a server that was started later
/// stays.
void remove_pid_file(const std::string& path);

}  // namespace standin
