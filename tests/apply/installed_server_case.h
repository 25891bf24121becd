#pragma once

#include <gtest/gtest.h>

#include "tests/support/installed_server.h"
#include "tests/support/waits.h"

/// The profile of this system is selected, whose paths are those of the server in the sandbox. The
/// host's networks are known. No sleep takes its time.
class InstalledServerCase : public testing::Test {
  protected:
    static constexpr const char* password = "Adm1n secret";

    InstalledServerCase();
    ~InstalledServerCase() override;

    /// Restarts the server with the password and logs in; a failure fails the test.
    void logIn();

    InstalledServer server;
    Waits waits;
};
