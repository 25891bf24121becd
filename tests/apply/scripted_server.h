#pragma once

#include <gtest/gtest.h>

#include <string>

#include "tests/apply/working_directory.h"
#include "tests/support/waits.h"

/// The selected installation profile names files in a directory of the test's own, which is the
/// current one, and in the place of the server stands a script that notes how it was called.
class ScriptedServer : public testing::Test {
  protected:
    static constexpr const char* config = "teluma.cfg";
    static constexpr const char* pid_file = "teluma.pid";

    ScriptedServer();
    ~ScriptedServer() override;

    /// Replaces the script by the one that notes its calls and then runs `commands`.
    void script(const std::string& commands);

    /// The calls so far, one a line: the arguments, each in brackets.
    static std::string calls();

    WorkingDirectory directory;
    Waits waits;
};
