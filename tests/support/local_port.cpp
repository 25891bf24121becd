#include "tests/support/local_port.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

namespace {

sockaddr_in socket_address(const std::string& address, int port) {
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_addr.s_addr = inet_addr(address.c_str());
    place.sin_port = htons(static_cast<uint16_t>(port));
    return place;
}

Descriptor bound_socket(const std::string& address, int port) {
    Descriptor bound(
        checked(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0), "socket"));
    // Two sockets may so be bound to one port as long as only one of them listens.
    const int shared = 1;
    checked(setsockopt(bound.get(), SOL_SOCKET, SO_REUSEADDR, &shared, sizeof shared),
            "setsockopt");
    const sockaddr_in place = socket_address(address, port);
    checked(bind(bound.get(), reinterpret_cast<const sockaddr*>(&place), sizeof place), "bind");
    return bound;
}

int port_of(const Descriptor& bound) {
    sockaddr_in place{};
    socklen_t size = sizeof place;
    checked(getsockname(bound.get(), reinterpret_cast<sockaddr*>(&place), &size), "getsockname");
    return ntohs(place.sin_port);
}

}  // namespace

LocalPort::LocalPort(int number) : holder(bound_socket("0.0.0.0", number)), port(port_of(holder)) {}

void LocalPort::open(const std::string& address, int most_waiting) {
    server = bound_socket(address, port);
    checked(listen(server.get(), most_waiting), "listen");
}

Descriptor LocalPort::takeConnection() {
    return Descriptor(accept4(server.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
}

int LocalPort::takeAll() {
    int taken = 0;
    while (takeConnection().get() != -1) ++taken;
    return taken;
}

Descriptor connection_to(int port, const std::string& address) {
    Descriptor connection(checked(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0), "socket"));
    const sockaddr_in place = socket_address(address, port);
    checked(connect(connection.get(), reinterpret_cast<const sockaddr*>(&place), sizeof place),
            "connect");
    return connection;
}

SilentPort::SilentPort(int number) : port(number) {
    constexpr int room_for_one = 0;
    port.open("0.0.0.0", room_for_one);
    firstCaller = connection_to(number);
}
