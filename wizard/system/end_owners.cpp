#include "wizard/system/end_owners.h"

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <string>

#include "wizard/base/descriptor.h"

namespace {

// One end as the second table prints it, its IPv4 address as part of an IPv6 one, ::ffff:0:0/96:
// the words of the address in hexadecimal, each as this machine reads it, and the port.
std::string printed_end(const sockaddr_in& end) {
    char text[64];
    std::snprintf(text, sizeof(text), "0000000000000000%08X%08X:%04X", htonl(0xffff),
                  end.sin_addr.s_addr, ntohs(end.sin_port));
    return text;
}

// The first table leaves the three words before the IPv4 address out.
bool is_end(const char* field, const std::string& end) {
    return end == field || end.compare(24, std::string::npos, field) == 0;
}

// An address of another host can't be given to a socket of this one.
bool is_own_address(sockaddr_in address) {
    address.sin_port = 0;
    const Descriptor probe(socket(AF_INET, SOCK_DGRAM, 0));
    return bind(probe.get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0 ||
           errno != EADDRNOTAVAIL;
}

bool find_listed_owner(const sockaddr_in& own, const sockaddr_in& remote, uid_t& owner) {
    for (const char* path : {"/proc/net/tcp", "/proc/net/tcp6"}) {
        const std::unique_ptr<std::FILE, int (*)(std::FILE*)> table(std::fopen(path, "r"),
                                                                    std::fclose);
        if (table != nullptr && find_owner(table.get(), own, remote, owner)) return true;
    }
    return false;
}

}  // namespace

bool find_owner(std::FILE* table, const sockaddr_in& own, const sockaddr_in& remote, uid_t& owner) {
    const std::string own_end = printed_end(own);
    const std::string remote_end = printed_end(remote);
    char line[512];
    while (std::fgets(line, sizeof(line), table) != nullptr) {
        char local_field[64];
        char remote_field[64];
        unsigned user = 0;
        unsigned long inode = 0;
        // Between the addresses and the user: state, queues, timer, retransmissions; after it the
        // timeout.
        const int fields = std::sscanf(line, " %*s %63s %63s %*s %*s %*s %*s %u %*s %lu",
                                       local_field, remote_field, &user, &inode);
        if (fields == 4 && inode != 0 && is_end(local_field, own_end) &&
            is_end(remote_field, remote_end)) {
            owner = user;
            return true;
        }
    }
    return false;
}

EndOwners find_end_owners(int descriptor, uid_t& own, uid_t& peer) {
    sockaddr_in local{};
    sockaddr_in remote{};
    socklen_t size = sizeof(sockaddr_in);
    if (getsockname(descriptor, reinterpret_cast<sockaddr*>(&local), &size) != 0 ||
        getpeername(descriptor, reinterpret_cast<sockaddr*>(&remote), &size) != 0)
        return EndOwners::missing;
    // Not whether it can be opened: a process may be out of descriptors.
    if (access("/proc/net/tcp", F_OK) != 0 || !is_own_address(remote)) return EndOwners::unlistable;
    const bool both =
        find_listed_owner(local, remote, own) && find_listed_owner(remote, local, peer);
    return both ? EndOwners::known : EndOwners::missing;
}
