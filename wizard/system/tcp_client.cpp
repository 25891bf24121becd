#include "wizard/system/tcp_client.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>

#include <cerrno>
#include <cstring>

#include "wizard/system/child_process.h"
#include "wizard/system/signal_gate.h"

namespace {

struct Answer {
    bool found;
    in_addr address;
    int failure;  // errno
};

Answer ask_resolver(const char* host) {
    Answer answer{};
    const hostent* entry = gethostbyname(host);
    answer.found = entry != nullptr && entry->h_addrtype == AF_INET;
    answer.failure = errno;
    if (answer.found) std::memcpy(&answer.address, entry->h_addr_list[0], sizeof(answer.address));
    return answer;
}

bool look_up_host(const char* host, in_addr& address) {
    if (inet_pton(AF_INET, host, &address) == 1) return true;
    Answer answer{};
    if (!ask_in_child([&] { answer = ask_resolver(host); }, &answer, sizeof(answer))) return false;
    address = answer.address;
    errno = answer.failure;
    return answer.found;
}

}  // namespace

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
    if (errno != EINPROGRESS) return errno;
    if (const int failure = wait_for(descriptor, POLLOUT)) return failure;
    int result = 0;
    socklen_t size = sizeof(result);
    if (getsockopt(descriptor, SOL_SOCKET, SO_ERROR, &result, &size) == -1) return errno;
    return result;
}
