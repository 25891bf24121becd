#include "tests/e2e/listening_port.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>

namespace {

Descriptor tcp_socket() {
    return Descriptor(checked(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0), "socket"));
}

sockaddr_in socket_address(const std::string& address, int port) {
    sockaddr_in result{};
    result.sin_family = AF_INET;
    result.sin_port = htons(static_cast<uint16_t>(port));
    inet_pton(AF_INET, address.c_str(), &result.sin_addr);
    return result;
}

Descriptor listen_at(const std::string& address, int port, int queue_length) {
    Descriptor listener = tcp_socket();
    const sockaddr_in place = socket_address(address, port);
    checked(bind(listener.get(), reinterpret_cast<const sockaddr*>(&place), sizeof place), "bind");
    checked(listen(listener.get(), queue_length), "listen");
    return listener;
}

Descriptor connect_to(const std::string& address, int port) {
    Descriptor caller = tcp_socket();
    const sockaddr_in place = socket_address(address, port);
    checked(connect(caller.get(), reinterpret_cast<const sockaddr*>(&place), sizeof place),
            "connect");
    return caller;
}

}  // namespace

ListeningPort::ListeningPort(int port, const std::string& address)
    : listener(listen_at(address, port, SOMAXCONN)) {}

int ListeningPort::connections() {
    pollfd caller{listener.get(), POLLIN, 0};
    while (poll(&caller, 1, 0) > 0)
        accepted.emplace_back(checked(accept(listener.get(), nullptr, nullptr), "accept"));
    return static_cast<int>(accepted.size());
}

// A queue of length 0 holds one connection.
SilentPort::SilentPort(int port)
    : listener(listen_at("0.0.0.0", port, 0)), first_caller(connect_to("127.0.0.1", port)) {}

void SilentPort::free() {
    first_caller.close();
    listener.close();
}
