#pragma once

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "tests/reliability/files/watched_run.h"
#include "tests/support/files.h"
#include "tests/support/installed_server.h"

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
    /// one back. Returns how many files that were.
    int restoreBroken() const;

    std::vector<std::string> calls;  // of the run without orders

  private:
    bool isOldOrNew(const std::string& path) const;

    InstalledServer server;
    std::map<std::string, FileState> old;
    std::map<std::string, std::string> newContents;
};
