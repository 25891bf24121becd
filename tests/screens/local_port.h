#pragma once

#include "tests/support/descriptor.h"

/// A TCP port of this machine that belongs to the test as long as the object lives. Connections to
/// it are refused, unless it is open. What cannot be had throws std::system_error.
class LocalPort {
  public:
    /// A port that nobody else has; or that of a number, which should be nobody else's.
    explicit LocalPort(int number = 0);

    int number() const { return port; }

    /// Accepts connections, on all addresses of this machine or on one.
    void open(const char* address = "0.0.0.0");
    void close() { server.close(); }

    /// Takes a connection that has been made, an empty descriptor if there is none. Never waits.
    Descriptor takeConnection();

  private:
    Descriptor holder;  // keeps the number while the port is closed
    Descriptor server;
    int port;
};
