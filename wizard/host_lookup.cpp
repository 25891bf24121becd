#include "wizard/host_lookup.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netdb.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "wizard/signal_gate.h"

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
    if (answer.found)
        std::memcpy(&answer.address, entry->h_addr_list[0], sizeof(answer.address));
    return answer;
}

// A resolver that waits for a name server can't be interrupted by a handler that ends the program,
// so a child process waits for it.
Answer ask_in_child(const char* host, int result_pipe[2]) {
    Answer answer{};
    const pid_t child = fork();
    if (child == -1) {
        answer.failure = errno;
        return answer;
    }
    if (child == 0) {
        restore_signals_in_child();
        answer = ask_resolver(host);
        _exit(write(result_pipe[1], &answer, sizeof(answer)) == sizeof(answer) ? 0 : 1);
    }
    wait_for_child(child);
    if (read(result_pipe[0], &answer, sizeof(answer)) != sizeof(answer))
        answer = {false, {}, EIO};
    return answer;
}

}  // namespace

bool look_up_host(const char* host, in_addr& address) {
    if (inet_pton(AF_INET, host, &address) == 1)
        return true;
    int result_pipe[2];
    if (pipe(result_pipe) == -1)
        return false;
    // A child that fails to write leaves nothing to read, which must not block.
    fcntl(result_pipe[0], F_SETFL, O_NONBLOCK);
    const Answer answer = ask_in_child(host, result_pipe);
    close(result_pipe[0]);
    close(result_pipe[1]);
    address = answer.address;
    errno = answer.failure;
    return answer.found;
}
