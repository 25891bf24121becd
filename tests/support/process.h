#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "tests/support/caller.h"
#include "tests/support/environment.h"
#include "tests/support/exit_status.h"

/// What a command has left behind.
struct CommandResult {
    ExitStatus status;
    std::string out;  // all of its standard output
    std::string err;  // all of its standard error
};

/// Runs a command to its end, found by PATH, with nothing on its standard input, default signal
/// actions, and a process group of its own. A daemon that it leaves behind is not waited for, even
/// if that keeps the output open.
///
/// A command that cannot be started throws std::system_error. One that does not end within
/// patience() is killed with its group, and the test ends as failed.
CommandResult run_command(std::vector<std::string> arguments,
                          const EnvironmentChanges& environment = {},
                          const Caller& caller = Caller::here());

/// Whether a process of this pid exists and has not ended; one that only waits to be reaped has.
bool process_running(pid_t pid);
