#include "wizard/system/tcp_client.h"

#include <arpa/inet.h>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>

#include <cerrno>
#include <cstring>

#include "wizard/system/child_process.h"
#include "wizard/system/signal_gate.h"

int open_tcp_socket() { return socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0); }

bool resolve_host(const char* host, int port, sockaddr_in& address) {
    address = sockaddr_in{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(port));
    if (inet_pton(AF_INET, host, &address.sin_addr) == 1) return true;
    struct Answer {
        bool found;
        in_addr address;
        int failure;  // errno
    } answer{};
    const auto ask_resolver = [&] {
        const hostent* entry = gethostbyname(host);
        answer.failure = errno;
        answer.found = entry != nullptr && entry->h_addrtype == AF_INET;
        if (answer.found)
            std::memcpy(&answer.address, entry->h_addr_list[0], sizeof(answer.address));
    };
    if (!ask_in_child(ask_resolver, &answer, sizeof(answer))) return false;
    address.sin_addr = answer.address;
    errno = answer.failure;
    return answer.found;
}

int connect_socket(int descriptor, const sockaddr_in& address) {
    if (connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0)
        return 0;
    if (errno != EINPROGRESS) return errno;
    if (const int failure = wait_for(descriptor, POLLOUT)) return failure;
    int result = 0;
    socklen_t size = sizeof(result);
    if (getsockopt(descriptor, SOL_SOCKET, SO_ERROR, &result, &size) == -1) return errno;
    return result;
}
