#include "wizard/system/tcp_client.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <sys/socket.h>

#include <cerrno>

#include "wizard/system/host_lookup.h"
#include "wizard/system/signal_gate.h"

int open_tcp_socket() {
    const int descriptor = socket(AF_INET, SOCK_STREAM, 0);
    if (descriptor != -1) {
        fcntl(descriptor, F_SETFD, FD_CLOEXEC);
        fcntl(descriptor, F_SETFL, fcntl(descriptor, F_GETFL) | O_NONBLOCK);
    }
    return descriptor;
}

bool resolve_host(const char* host, int port, sockaddr_in& address) {
    address = sockaddr_in{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(port));
    return look_up_host(host, address.sin_addr);
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
