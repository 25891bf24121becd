#include "wizard/tcp_rows.h"

#include <arpa/inet.h>

#include <string>

namespace {

// How the tables print one end: the words of its address in hexadecimal, each as this machine reads
// it, and the port.
struct PrintedEnd {
    std::string text;
    std::string as_ipv6;

    explicit PrintedEnd(const sockaddr_in& end) {
        char printed[64];
        std::snprintf(printed, sizeof(printed), "%08X:%04X",
                      static_cast<unsigned>(end.sin_addr.s_addr), ntohs(end.sin_port));
        text = printed;
        // ::ffff:0:0/96
        std::snprintf(printed, sizeof(printed), "%08X%08X%08X", 0U, 0U,
                      static_cast<unsigned>(htonl(0xffff)));
        as_ipv6 = printed + text;
    }

    bool is(const char* field) const { return text == field || as_ipv6 == field; }
};

}  // namespace

bool find_owner(std::FILE* table, const sockaddr_in& own, const sockaddr_in& remote, uid_t& owner) {
    const PrintedEnd own_end(own);
    const PrintedEnd remote_end(remote);
    char line[512];
    while (std::fgets(line, sizeof(line), table) != nullptr) {
        char local_field[64];
        char remote_field[64];
        unsigned user = 0;
        unsigned long inode = 0;
        // Between the addresses and the user: state, queues, timer, retransmissions; behind it the
        // timeout.
        const int fields = std::sscanf(line, " %*s %63s %63s %*s %*s %*s %*s %u %*s %lu",
                                       local_field, remote_field, &user, &inode);
        if (fields == 4 && inode != 0 && own_end.is(local_field) && remote_end.is(remote_field)) {
            owner = user;
            return true;
        }
    }
    return false;
}
