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

/// Finds the users who have both ends of a connected IPv4 TCP socket, by the kernel's tables of
/// connections, /proc/net/tcp and tcp6 (proc(5)), as both stand there. Only Linux has such tables.
EndOwners find_end_owners(int descriptor, uid_t& own, uid_t& peer);

/// Finds the end of a TCP connection that has this address of its own and that remote one in
/// `table`, an open /proc/net/tcp or tcp6 (proc(5)), and stores the user who took it, with
/// accept(2) or socket(2), in `owner`. In the second table IPv4 addresses stand as parts of IPv6
/// ones. Returns false, with `owner` as it was, when it is not there or nobody has taken it yet,
/// and when nobody has it any more: it has no inode then and seems to be root's.
bool find_owner(std::FILE* table, const sockaddr_in& own, const sockaddr_in& remote, uid_t& owner);
