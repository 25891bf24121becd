#pragma once

#include <sys/types.h>

#include <iosfwd>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/wait_until.h"

/// How a process ended: by itself with an exit code, or by a signal. Exactly one of the two is set.
struct ExitStatus {
    int code = -1;   // 0 to 255, or -1 when a signal ended it
    int signal = 0;  // or 0 when it ended by itself
};

ExitStatus exited(int code);
ExitStatus killed_by(int signal);

/// Reads the status that waitpid(2) gives for a process that has ended.
ExitStatus from_wait_status(int wait_status);

bool operator==(const ExitStatus& left, const ExitStatus& right);
bool operator!=(const ExitStatus& left, const ExitStatus& right);

std::ostream& operator<<(std::ostream& out, const ExitStatus& status);

/// Changes to the environment: the new value of a variable, or nothing to take it out.
using EnvironmentChanges = std::map<std::string, std::optional<std::string>>;

/// This process's environment with the changes, as "NAME=value" strings.
std::vector<std::string> changed_environment(const EnvironmentChanges& changes);

/// The strings as exec(3) takes them: pointers into `strings`, then a null pointer.
std::vector<char*> exec_array(std::vector<std::string>& strings);

/// What a command has left behind.
struct CommandResult {
    ExitStatus status;
    std::string out;  // all of its standard output
    std::string err;  // all of its standard error
};

/// Runs a command to its end, found by PATH, with nothing on its standard input, default signal
/// actions, and a process group of its own. A daemon that it leaves behind is not waited for. A
/// command that cannot be started throws std::system_error. One that does not end within patience()
/// is killed with its group, and the test ends as failed.
CommandResult run_command(std::vector<std::string> arguments,
                          const EnvironmentChanges& environment = {},
                          const Caller& caller = Caller::here());

/// Whether a process of this pid exists and has not ended; one that only waits to be reaped has.
bool process_running(pid_t pid);
