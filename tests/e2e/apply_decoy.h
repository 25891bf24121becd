#pragma once

#include <sys/types.h>

/// A process that is not the server, for pid files and executables that lead elsewhere. It stays,
/// and writes its pid and each SIGTERM that it gets into /run/scratch/decoy, one a line.
class Decoy {
  public:
    Decoy();

    pid_t pid() const;

    /// Waits until it has got so many SIGTERMs.
    void waitForSignals(int count) const;
};
