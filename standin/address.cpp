#include "address.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <cerrno>

#include "wizard/system/descriptor.h"
#include "text.h"

namespace standin {

namespace {

const int highest_port = 65535;

bool is_dotted(const std::string& host) {
    in_addr unused{};
    return inet_pton(AF_INET, host.c_str(), &unused) == 1;
}

}  // namespace

bool parse_address(const std::string& text, int least_port, Address& address) {
    const std::size_t colon = text.find(':');
    long port = 0;
    if (colon == 0 || colon == std::string::npos ||
        !parse_whole(text.substr(colon + 1), least_port, highest_port, port)) {
        return false;
    }
    address.host = text.substr(0, colon);
    address.port = static_cast<int>(port);
    return true;
}

bool is_listener_address(const std::string& text) {
    Address address;
    return parse_address(text, 1, address) && is_dotted(address.host);
}

bool listeners_collide(const std::string& one, const std::string& other) {
    const std::string every_host = "0.0.0.0";
    Address first;
    Address second;
    parse_address(one, 1, first);
    parse_address(other, 1, second);
    return first.port == second.port &&
           (first.host == second.host || first.host == every_host || second.host == every_host);
}

bool address_is_in_use(const std::string& text) {
    Address address;
    parse_address(text, 1, address);
    sockaddr_in name{};
    name.sin_family = AF_INET;
    name.sin_port = htons(static_cast<in_port_t>(address.port));
    inet_pton(AF_INET, address.host.c_str(), &name.sin_addr);

    const Descriptor probe(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    // A connection that has just ended must not count as a listener.
    const int reuse = 1;
    setsockopt(probe.get(), SOL_SOCKET, SO_REUSEADDR, &reuse, sizeof reuse);
    return bind(probe.get(), reinterpret_cast<const sockaddr*>(&name), sizeof name) != 0 &&
           errno == EADDRINUSE;
}

}  // namespace standin
