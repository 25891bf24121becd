#pragma once

#include <unistd.h>

#include <filesystem>
#include <string>

#include "tests/support/files.h"

/// While it lives, this process is in an empty directory, which then goes away.
class WorkingDirectory {
  public:
    WorkingDirectory() { std::filesystem::current_path(directory.path()); }
    ~WorkingDirectory() { static_cast<void>(!chdir(before.c_str())); }

    /// The path of a name inside.
    std::string operator/(const std::string& name) const { return directory / name; }

  private:
    TempDir directory;
    std::filesystem::path before = std::filesystem::current_path();
};
