#include "tests/apply/scripted_peer.h"

#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

ScriptedPeer::ScriptedPeer(const std::string& answers) {
    int ends[2];
    checked(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends), "socketpair");
    client = Descriptor(ends[0]);
    server = Descriptor(ends[1]);
    checked(static_cast<int>(write(server.get(), answers.data(), answers.size())), "write");
    checked(shutdown(server.get(), SHUT_WR), "shutdown");
}

std::string ScriptedPeer::received() {
    char piece[4096];
    ssize_t length = 0;
    while ((length = read(server.get(), piece, sizeof piece)) > 0)
        bytes.append(piece, static_cast<size_t>(length));
    return bytes;
}

std::string ScriptedPeer::unread() const {
    char piece[4096];
    const ssize_t length = recv(client.get(), piece, sizeof piece, MSG_PEEK);
    return {piece, static_cast<size_t>(checked(static_cast<int>(length), "recv"))};
}
