#include "tests/ui/listener.h"

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

in_addr address_of_this_process() {
    constexpr in_addr_t loopback = 127U << 24;
    constexpr in_addr_t apart_from_the_usual = 64U << 16;
    return {htonl(loopback | apart_from_the_usual | static_cast<in_addr_t>(getpid()))};
}

}  // namespace

Listener::Listener()
    : listening(checked(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0), "socket")) {
    address.sin_family = AF_INET;
    address.sin_addr = address_of_this_process();
    auto* place = reinterpret_cast<sockaddr*>(&address);
    socklen_t size = sizeof address;
    checked(bind(listening.get(), place, size), "bind");
    checked(getsockname(listening.get(), place, &size), "getsockname");
    checked(listen(listening.get(), 5), "listen");
}

std::string Listener::host() const {
    return inet_ntoa(address.sin_addr);
}

bool Listener::wasProbed() const {
    return Descriptor(accept(listening.get(), nullptr, nullptr)).get() != -1;
}
