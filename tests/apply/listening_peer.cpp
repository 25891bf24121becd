#include "tests/apply/listening_peer.h"

#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <utility>

ListeningPeer::ListeningPeer(std::string answersToGive)
    : answers(std::move(answersToGive)),
      listener(checked(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0), "socket")) {
    sockaddr_in name{};
    socklen_t size = sizeof name;
    name.sin_family = AF_INET;
    name.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    auto* const address = reinterpret_cast<sockaddr*>(&name);
    checked(bind(listener.get(), address, size), "bind");
    checked(listen(listener.get(), 1), "listen");
    checked(getsockname(listener.get(), address, &size), "getsockname");
    port_number = ntohs(name.sin_port);
}

bool ListeningPeer::hasClient() const {
    pollfd waiting{listener.get(), POLLIN, 0};
    return client.get() != -1 || poll(&waiting, 1, 0) == 1;
}

void ListeningPeer::serve() {
    if (client.get() != -1 || !hasClient())
        return;
    client = Descriptor(
        checked(accept4(listener.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK), "accept"));
    checked(static_cast<int>(write(client.get(), answers.data(), answers.size())), "write");
    checked(shutdown(client.get(), SHUT_WR), "shutdown");
}

std::string ListeningPeer::received() const {
    char bytes[4096];
    const ssize_t length = recv(client.get(), bytes, sizeof bytes, MSG_PEEK);
    return {bytes, static_cast<size_t>(checked(static_cast<int>(length), "recv"))};
}
