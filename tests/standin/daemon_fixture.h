#pragma once

#include <gtest/gtest.h>
#include <sys/types.h>

#include <string>
#include <vector>

#include "standin/files.h"
#include "tests/support/files.h"
#include "tests/support/process.h"

/// The real server program in a directory of its own, at a port of its own. Daemons that are left
/// over at the end of a test are killed.
class DaemonTest : public testing::Test {
  protected:
    /// Writes the sample configuration with the CLI switched on and sets the password "secret".
    DaemonTest();

    void TearDown() override;

    /// Runs the program with the directory and `arguments` to its end, where it starts the server.
    CommandResult run(const std::vector<std::string>& arguments) const;
    void start();

    /// Sends the daemon SIGTERM and waits for its end; or only waits.
    ExitStatus stop() const;
    ExitStatus waitForEnd() const;

    /// The process that was started last, by the log; and the port that it listens at.
    pid_t daemon() const;
    int port() const;

    /// Replaces a part of the configuration; or all fault rules.
    void configure(const std::string& part, const std::string& replacement) const;
    void faults(const std::string& rules) const;

    std::string log() const;

    TempDir directory;
    RunPaths paths{directory.path()};
};
