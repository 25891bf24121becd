#pragma once

#include <string>
#include <vector>

#include "tests/support/descriptor.h"

/// A program that has a port of this host, which is what the wizard's port check looks for.
class ListeningPort {
  public:
    /// Accepts connections at `address` until it goes; throws std::system_error.
    explicit ListeningPort(int port, const std::string& address = "0.0.0.0");

    /// How many connections there have been.
    int connections();

    /// Gives the port free.
    void free() { listener.close(); }

  private:
    Descriptor listener;
    std::vector<Descriptor> accepted;
};

/// A port that lets a connection attempt wait: its queue is full, so the kernel drops what comes.
/// Nobody is told anything before free(), which refuses the attempts that still go on.
class SilentPort {
  public:
    explicit SilentPort(int port);

    void free();

  private:
    Descriptor listener;
    Descriptor first_caller;
};
