#pragma once

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "tests/e2e/wizard_run.h"
#include "tests/support/files.h"
#include "tests/support/installed_server.h"

/// A run of the wizard whose calls about files are watched. One may live at a time.
class WatchedRun : public WizardRun {
  public:
    /// With an order as shim_orders.h has them.
    explicit WatchedRun(const std::string& order = "");

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

/// A file as it stands at a moment.
struct FileState {
    std::string content;
    FileFacts facts;
};

/// A host before the wizard, to which it can be brought back any number of times, with a server
/// that runs. A run without orders has shown what the wizard calls and what it makes of the files.
class FileTest : public testing::Test {
  protected:
    /// Gives the files owners and modes of their own. The server's CLI is at "localhost". There is
    /// a backup of a sendmail already.
    FileTest();

    /// Ends the server, puts everything back and starts the server.
    void reset();

    /// Expects that each of the configuration and the script is the old file, or the new one, or
    /// that the old one stands beside it; that what stands beside it as the old one is just that;
    /// and that there are the old sendmail, in its place or as a backup, and the backup that was
    /// there before.
    void expectNothingLost() const;

    /// Expects the old ones beside both files.
    void expectOriginalsKept() const;

    /// Whether both files are the old ones and nothing stands beside them.
    bool areUntouched() const;

    /// Does what an administrator has to do who finds a file neither old nor new: copies the old
    /// one back.
    void restoreBroken() const;

    std::vector<std::string> calls;  // of the run without orders

  private:
    bool isOldOrNew(const std::string& path) const;

    InstalledServer server;
    std::map<std::string, FileState> old;
    std::map<std::string, std::string> newContents;
};
