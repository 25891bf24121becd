#pragma once

#include <string>

#include "tests/support/descriptor.h"

/// A TCP port of this machine that belongs to the test as long as the object lives. Connections to
/// it are refused, unless it is open. What cannot be had throws std::system_error.
class LocalPort {
  public:
    /// A free port, or the one of this number, which nobody else should have.
    explicit LocalPort(int number = 0);

    int number() const { return port; }

    /// Accepts connections, on all addresses of this machine or on one. The kernel keeps
    /// `most_waiting` of them, and one more; it drops others without an answer.
    void open(const std::string& address = "0.0.0.0", int most_waiting = 16);
    void close() { server.close(); }

    /// Takes a connection that has been made, an empty descriptor if there is none. Never waits.
    Descriptor takeConnection();

    /// Takes all connections that have been made, hangs up, and returns how many there were.
    int takeAll();

  private:
    Descriptor holder;  // keeps the number while the port is closed
    Descriptor server;
    int port;
};

/// A connection to a port, which waits when it is read or written; throws std::system_error.
Descriptor connection_to(int port, const std::string& address = "127.0.0.1");

/// A port that lets a connection attempt wait, since its queue is full, until free() refuses it.
class SilentPort {
  public:
    explicit SilentPort(int number);

    void free() { port.close(); }

  private:
    LocalPort port;
    Descriptor firstCaller;
};
