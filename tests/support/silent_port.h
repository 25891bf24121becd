#pragma once

#include "tests/support/local_port.h"

/// A port that lets a connection attempt wait: its queue is full, so the kernel drops what comes.
/// Nobody is told anything before free(), which refuses the attempts that still go on.
class SilentPort {
  public:
    explicit SilentPort(int number);

    void free() { port.close(); }

  private:
    LocalPort port;
    Descriptor first_caller;
};
