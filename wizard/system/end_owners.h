#pragma once

#include <netinet/in.h>
#include <sys/types.h>

#include <cstdio>

/// What is known about the users who have the two ends of a connection.
enum class EndOwners {
    known,
    missing,    ///< one end has not been accepted yet, or nobody has it any more
    unlistable  ///< the other end is on another host, or the system lists no owners
};

/// Stores in `own` and `peer` the users who have the ends of a connected IPv4 TCP socket, by the
/// kernel's tables of connections, /proc/net/tcp and tcp6 (proc(5)), which only Linux has. They
/// mean something only where the result is `known`.
EndOwners find_end_owners(int descriptor, uid_t& own, uid_t& peer);

/// Stores in `owner` who took the end of a TCP connection, with accept(2) or socket(2), that has
/// these two addresses in `table`, an open /proc/net/tcp, or tcp6 with its IPv4 addresses as parts
/// of IPv6 ones. Returns false, with `owner` as it was, when nobody has taken it yet, or nobody has
/// it any more: it has no inode then and seems to be root's.
bool find_owner(std::FILE* table, const sockaddr_in& own, const sockaddr_in& remote, uid_t& owner);
