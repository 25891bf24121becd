#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/e2e/wizard_run.h"
#include "tests/reliability/files/changed_files.h"

/// A run of the wizard whose calls about files are watched, and fail or kill by orders. Its sleeps
/// take next to no time. One may live at a time.
class WatchedRun : public WizardRun {
  public:
    explicit WatchedRun(EnvironmentChanges orders = {});

    /// Removes the private directory that a killed run has left behind.
    ~WatchedRun();
    WatchedRun(const WatchedRun&) = delete;
    WatchedRun& operator=(const WatchedRun&) = delete;

    /// Answers every screen with as little to do for the server as can be, but with all that
    /// changes files. Starts at the screen `from`.
    void answerAll(const std::string& domain = "first.example", Stop from = Stop::password);

    /// The calls so far, as shim_orders.h writes them down.
    static std::vector<std::string> calls();

    /// The path of the private directory; empty while there is none.
    static std::string privateDirectory();
};

/// Orders that the `count`-th call of this kind ("teluma-wizard fsync /var/opt/...") fails.
EnvironmentChanges failing(const std::string& call, int count);

/// Orders that SIGKILL comes just before the `count`-th call that changes a file, counted from 1;
/// shim_orders.h says to whom.
EnvironmentChanges killing(int count, const std::string& whom);

/// A host on which a run without orders has shown what the wizard does and what it makes of the
/// files.
class FileTest : public testing::Test {
  protected:
    FileTest();

    ChangedFiles files;
    std::vector<std::string> calls;  // of that run
};

/// Waits until no cp or rm runs that a killed wizard has left behind.
void wait_for_commands();
