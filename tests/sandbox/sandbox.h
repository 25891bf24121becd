#pragma once

#include <string>
#include <vector>

#include "tests/support/process.h"

/// The path of the program that makes a sandbox.
std::string sandbox_program();

/// The directory of the build from which the stand-in server is installed.
std::string standin_package();

/// Runs `script` by the shell in a sandbox that is made with `options`, to its end.
CommandResult in_sandbox(const std::string& script, const std::vector<std::string>& options = {},
                         const Caller& caller = Caller::here());

/// A mark that the processes of one sandbox carry in their environment, and no other process does.
class ProcessMark {
  public:
    ProcessMark();

    /// For the environment of the sandbox's command.
    EnvironmentChanges environment() const;

    /// The ids of the living processes that carry the mark, the sandbox's own included. Processes
    /// of other users are seen by root only.
    std::vector<int> carriers() const;

  private:
    std::string value;
};
