#include "wizard/tcp_client.h"

#include <fcntl.h>
#include <netdb.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "wizard/signal_gate.h"

int open_tcp_socket() {
    const int descriptor = socket(AF_INET, SOCK_STREAM, 0);
    if (descriptor != -1) {
        fcntl(descriptor, F_SETFD, FD_CLOEXEC);
        fcntl(descriptor, F_SETFL, fcntl(descriptor, F_GETFL) | O_NONBLOCK);
    }
    return descriptor;
}

bool resolve_host(const char* host, int port, sockaddr_in& address) {
    const hostent* entry = gethostbyname(host);
    if (entry == nullptr || entry->h_addrtype != AF_INET)
        return false;
    address = sockaddr_in{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(port));
    const size_t length = std::min(static_cast<size_t>(entry->h_length), sizeof(address.sin_addr));
    std::memcpy(&address.sin_addr, entry->h_addr_list[0], length);
    return true;
}

int connect_socket(int descriptor, const sockaddr_in& address) {
    if (connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0)
        return 0;
    if (errno != EINPROGRESS)
        return errno;
    if (const int failure = wait_writable(descriptor))
        return failure;
    int result = 0;
    socklen_t size = sizeof(result);
    if (getsockopt(descriptor, SOL_SOCKET, SO_ERROR, &result, &size) == -1)
        return errno;
    return result;
}
