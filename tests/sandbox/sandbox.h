#pragma once

#include <string>
#include <vector>

#include "tests/support/process.h"

/// The path of the program that makes a sandbox.
inline const std::string sandbox_program = SANDBOX_PROGRAM;

/// The directory of the build from which the stand-in server is installed.
inline const std::string standin_package = STANDIN_PACKAGE;

/// Runs `script` by the shell in a sandbox that is made with `options`, to its end.
CommandResult in_sandbox(const std::string& script, const std::vector<std::string>& options = {},
                         const Caller& caller = Caller::here());

/// A mark that the processes of one sandbox carry in their environment, and no other process does.
class ProcessMark {
  public:
    ProcessMark();

    /// For the environment of the sandbox's command.
    EnvironmentChanges environment() const;

    /// How many living processes carry the mark, the sandbox's own included. Processes of other
    /// users are seen by root only.
    int carriers() const;

  private:
    std::string value;
};
