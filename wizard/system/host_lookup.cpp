#include "wizard/system/host_lookup.h"

#include <arpa/inet.h>
#include <netdb.h>
#include <sys/socket.h>

#include <cerrno>
#include <cstring>

#include "wizard/system/child_process.h"

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

}  // namespace

bool look_up_host(const char* host, in_addr& address) {
    if (inet_pton(AF_INET, host, &address) == 1)
        return true;
    Answer answer{};
    if (!ask_in_child([&] { answer = ask_resolver(host); }, &answer, sizeof(answer)))
        return false;
    address = answer.address;
    errno = answer.failure;
    return answer.found;
}
