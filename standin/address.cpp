#include "address.h"

#include <arpa/inet.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <cerrno>
#include <cstring>

#include "text.h"
#include "wizard/base/descriptor.h"

namespace {

const char* const every_host = "0.0.0.0";

/// The socket address of the listener address or name `text`; false when it has none.
bool resolve(const std::string& text, sockaddr_in& name) {
    Address address;
    addrinfo wanted{};
    wanted.ai_family = AF_INET;
    wanted.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (!parse_address(text, 0, address) ||
        getaddrinfo(address.host.c_str(), nullptr, &wanted, &found) != 0)
        return false;
    std::memcpy(&name, found->ai_addr, sizeof name);
    name.sin_port = htons(static_cast<in_port_t>(address.port));
    freeaddrinfo(found);
    return true;
}

std::string own_address(const Descriptor& listener) {
    sockaddr_in name{};
    socklen_t size = sizeof name;
    getsockname(listener.get(), reinterpret_cast<sockaddr*>(&name), &size);
    char host[INET_ADDRSTRLEN];
    inet_ntop(AF_INET, &name.sin_addr, host, sizeof host);
    return std::string(host) + ":" + std::to_string(ntohs(name.sin_port));
}

void switch_on(const Descriptor& socket, int level, int option) {
    const int on = 1;
    setsockopt(socket.get(), level, option, &on, sizeof on);
}

/// A socket bound to `name`; a closed one, with errno set, when it can't be. Connections that have
/// just ended, as of the server before a restart, are no obstacle.
Descriptor bound_socket(const sockaddr_in& name) {
    Descriptor bound(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    switch_on(bound, SOL_SOCKET, SO_REUSEADDR);
    const bool good = bind(bound.get(), reinterpret_cast<const sockaddr*>(&name), sizeof name) == 0;
    return good ? std::move(bound) : Descriptor();
}

}  // namespace

bool parse_address(const std::string& text, int least_port, Address& address) {
    const int highest_port = 65535;
    const std::size_t colon = text.find(':');
    long port = 0;
    if (colon == 0 || colon == std::string::npos ||
        !parse_whole(text.substr(colon + 1), least_port, highest_port, port))
        return false;
    address = {text.substr(0, colon), static_cast<int>(port)};
    return true;
}

bool is_listener_address(const std::string& text) {
    Address address;
    in_addr unused{};
    return parse_address(text, 1, address) &&
           inet_pton(AF_INET, address.host.c_str(), &unused) == 1;
}

bool listeners_collide(const std::string& one, const std::string& other) {
    Address first;
    Address second;
    parse_address(one, 1, first);
    parse_address(other, 1, second);
    return first.port == second.port &&
           (first.host == second.host || first.host == every_host || second.host == every_host);
}

bool address_is_in_use(const std::string& text) {
    sockaddr_in name{};
    return resolve(text, name) && !bound_socket(name).isOpen() && errno == EADDRINUSE;
}

Descriptor open_listener(std::string& address, std::string& problem) {
    sockaddr_in name{};
    if (!resolve(address, name)) {
        problem = "no address to listen at: " + address;
        return {};
    }
    Descriptor listener = bound_socket(name);
    if (!listener.isOpen() || listen(listener.get(), SOMAXCONN) != 0) {
        problem = "can't listen at " + address + ": " + std::strerror(errno);
        return {};
    }
    address = own_address(listener);
    return listener;
}

Descriptor accept_client(const Descriptor& listener) {
    Descriptor client(accept4(listener.get(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
    if (client.isOpen()) switch_on(client, IPPROTO_TCP, TCP_NODELAY);
    return client;
}
