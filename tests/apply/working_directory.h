#pragma once

#include <unistd.h>

#include <string>

#include "tests/support/descriptor.h"
#include "tests/support/files.h"

/// While it lives, this process is in an empty directory, which then goes away.
class WorkingDirectory {
  public:
    WorkingDirectory() {
        char* const here = getcwd(nullptr, 0);
        before = here;
        free(here);
        checked(chdir(directory.path().c_str()), "chdir");
    }
    ~WorkingDirectory() { static_cast<void>(!chdir(before.c_str())); }
    WorkingDirectory(const WorkingDirectory&) = delete;
    WorkingDirectory& operator=(const WorkingDirectory&) = delete;

    /// The path of a name inside.
    std::string operator/(const std::string& name) const { return directory / name; }

  private:
    TempDir directory;
    std::string before;
};
