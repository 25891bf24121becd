#pragma once

#include <sys/socket.h>
#include <unistd.h>

#include <string>

#include "tests/support/descriptor.h"

/// What a server answers to a command that it has carried out, or refused.
constexpr const char* accepted = "+OK: done\r\nserver> ";
constexpr const char* refused = "-ERR: no\r\nserver> ";

/// The server's end of a socket pair, with all its answers laid out beforehand: the other end reads
/// them one by one and then finds the connection at its end.
class ScriptedPeer {
  public:
    explicit ScriptedPeer(const std::string& answers) {
        int ends[2];
        checked(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends),
                "socketpair");
        client = Descriptor(ends[0]);
        server = Descriptor(ends[1]);
        checked(static_cast<int>(write(server.get(), answers.data(), answers.size())), "write");
        checked(shutdown(server.get(), SHUT_WR), "shutdown");
    }

    /// The client's end. It never blocks, as the wizard's sockets.
    int clientEnd() const { return client.get(); }

    /// Everything that the client has sent so far.
    std::string received() {
        char piece[4096];
        ssize_t length = 0;
        while ((length = read(server.get(), piece, sizeof piece)) > 0)
            bytes.append(piece, static_cast<size_t>(length));
        return bytes;
    }

    /// What the client has not read of the answers.
    std::string unread() const {
        char piece[4096];
        const ssize_t length = recv(client.get(), piece, sizeof piece, MSG_PEEK);
        return {piece, static_cast<size_t>(checked(static_cast<int>(length), "recv"))};
    }

    /// Breaks the connection, so that nothing can be sent any more.
    void hangUp() { server.close(); }

  private:
    Descriptor client;
    Descriptor server;
    std::string bytes;
};
