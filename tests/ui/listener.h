#pragma once

#include <netinet/in.h>

#include <string>

#include "tests/support/descriptor.h"

/// A program that listens on some port, of a loopback address that only this process uses: once the
/// port is given up nobody else takes it.
class Listener {
  public:
    Listener();

    std::string host() const;
    int port() const { return ntohs(address.sin_port); }

    /// Gives the port up.
    void stop() { listening.close(); }

    /// Whether somebody has connected since the last call.
    bool wasProbed() const;

  private:
    sockaddr_in address{};
    Descriptor listening;
};
