#pragma once

#include <sys/types.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/support/installed_server.h"
#include "tests/support/process.h"

/// What a user saw who pressed Enter whenever the wizard waited for a key.
struct ChildRun {
    ExitStatus status;
    Lines boxes;                   // the words in the box at each wait
    std::vector<int> states = {};  // the screen that each run of the sequence led to
    std::string written = {};      // all that the terminal was sent
};

/// Applies everything that can be chosen to the sandbox's server, in a process of its own, as the
/// wizard remembers what it has done for as long as it runs. Before, the server is made as it was
/// when the sandbox was new, and given the fault `rules`.
class ChildRuns {
  public:
    /// Keeps what the server has now for the runs to begin with.
    ChildRuns();

    /// Runs the sequence so often, or until the process ends by itself.
    ChildRun apply(const std::string& rules, int times);

    /// Runs the sequence once and has `interrupt` called with the process meanwhile. What there is
    /// on its standard output then is `printed`.
    ExitStatus interrupted(const std::string& rules, const std::function<void(pid_t)>& interrupt,
                           std::string& printed);

    InstalledServer server;

  private:
    void makeServerNew(const std::string& rules) const;
};
