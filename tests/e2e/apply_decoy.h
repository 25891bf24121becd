#pragma once

#include <sys/types.h>

/// A process that is not the server, for pid files and executables that lead elsewhere. It writes
/// down each SIGTERM that it gets, and stays.
class Decoy {
  public:
    Decoy();

    pid_t pid() const { return process; }

    /// How many SIGTERMs it has got.
    int signals() const;

    /// Waits until it has got so many.
    void waitForSignals(int count) const;

  private:
    pid_t process;
};
