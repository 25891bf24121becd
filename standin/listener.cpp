#include "listener.h"

#include <arpa/inet.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <cerrno>
#include <cstring>

#include "address.h"

namespace standin {

namespace {

bool resolve(const std::string& text, sockaddr_in& name) {
    Address address;
    if (!parse_address(text, 0, address)) {
        return false;
    }
    addrinfo wanted{};
    wanted.ai_family = AF_INET;
    wanted.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (getaddrinfo(address.host.c_str(), nullptr, &wanted, &found) != 0) {
        return false;
    }
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

}  // namespace

Descriptor open_listener(std::string& address, std::string& problem) {
    sockaddr_in name{};
    if (!resolve(address, name)) {
        problem = "no address to listen at: " + address;
        return {};
    }
    Descriptor listener(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    // A restart must not wait for the connections of the server before to be forgotten.
    switch_on(listener, SOL_SOCKET, SO_REUSEADDR);
    if (bind(listener.get(), reinterpret_cast<const sockaddr*>(&name), sizeof name) != 0 ||
        listen(listener.get(), SOMAXCONN) != 0) {
        problem = "can't listen at " + address + ": " + std::strerror(errno);
        return {};
    }
    address = own_address(listener);
    return listener;
}

Descriptor accept_client(const Descriptor& listener) {
    Descriptor client(accept4(listener.get(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
    if (client.isOpen()) {
        switch_on(client, IPPROTO_TCP, TCP_NODELAY);
    }
    return client;
}

}  // namespace standin
