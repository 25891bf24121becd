#pragma once

#include <string>

#include "tests/support/descriptor.h"

/// What a server answers to a command that it has carried out, or refused.
constexpr const char* accepted = "+OK: done\r\nserver> ";
constexpr const char* refused = "-ERR: no\r\nserver> ";

/// The server's end of a socket pair, with all its answers laid out beforehand: the other end reads
/// them one by one and then finds the connection at its end.
class ScriptedPeer {
  public:
    explicit ScriptedPeer(const std::string& answers);

    /// The client's end. It never blocks, as the wizard's sockets.
    int clientEnd() const { return client.get(); }

    /// Everything that the client has sent so far.
    std::string received();

    /// What the client has not read of the answers.
    std::string unread() const;

    /// Breaks the connection, so that nothing can be sent any more.
    void hangUp() { server.close(); }

  private:
    Descriptor client;
    Descriptor server;
    std::string bytes;
};
