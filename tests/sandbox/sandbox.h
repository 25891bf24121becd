#pragma once

#include <string>
#include <vector>

#include "tests/support/process.h"

/// The path of the program that makes a sandbox.
inline const std::string sandbox_program = SANDBOX_PROGRAM;

/// The directory of the build from which the stand-in server is installed.
inline const std::string standin_package = STANDIN_PACKAGE;

/// Runs `script` by the shell in a sandbox that is made with `options`, to its end.
inline CommandResult in_sandbox(const std::string& script,
                                const std::vector<std::string>& options = {},
                                const Caller& caller = Caller::here()) {
    std::vector<std::string> command = {sandbox_program};
    command.insert(command.end(), options.begin(), options.end());
    command.insert(command.end(), {"--", "sh", "-c", script});
    return run_command(command, {}, caller);
}
