#pragma once

#include <gtest/gtest.h>

#include "tests/apply/sandboxed_server.h"
#include "tests/support/waits.h"

/// The profile of this system is selected, whose paths are those of the server in the sandbox. The
/// host's networks are known. No sleep takes its time.
class SandboxedServerCase : public testing::Test {
  protected:
    static constexpr const char* password = "Adm1n secret";

    SandboxedServerCase();
    ~SandboxedServerCase() override;

    /// Restarts the server with the password and logs in; a failure fails the test.
    void logIn();

    SandboxedServer server;
    Waits waits;
};
