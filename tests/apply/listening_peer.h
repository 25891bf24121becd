#pragma once

#include <string>

#include "tests/support/descriptor.h"
#include "tests/support/local_port.h"

/// A server at a TCP port of 127.0.0.1 that serves one client, without a thread: the test calls
/// serve() while the client waits.
class ListeningPeer {
  public:
    /// Listens. The client that connects finds these answers and then the end of the connection.
    explicit ListeningPeer(std::string answersToGive);

    int port() const { return listener.number(); }

    /// Whether a client has connected, be it served or not.
    bool hasClient();

    /// Sends the answers if a client has connected and has not been served yet.
    void serve();

    /// Leaves the client alone with what has been sent.
    void hangUp() { client.close(); }

    /// Everything that the client has sent so far.
    std::string received() const;

    /// Takes no more clients: whoever connects is refused.
    void stopListening() { listener.close(); }

  private:
    std::string answers;
    LocalPort listener;
    Descriptor client;
    bool served = false;
};
