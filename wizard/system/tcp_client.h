#pragma once

#include <netinet/in.h>

/// Connecting to a TCP port in a way that signals can come in while the program waits.

/// Creates an IPv4 TCP socket that never blocks and that child processes don't inherit. Returns its
/// descriptor, which the caller closes, or -1 with errno set.
int open_tcp_socket();

/// Stores the first IPv4 address of `host`, a name or a dotted address, and the low 16 bits of
/// `port` in `address`. Waits as long as a name server takes, letting signals in. Returns false
/// when the host has no address; errno is then what gethostbyname(3) left.
bool resolve_host(const char* host, int port, sockaddr_in& address);

/// Connects a socket of open_tcp_socket(), as long as that takes, letting signals in. Returns 0 or
/// the errno of the failure.
int connect_socket(int descriptor, const sockaddr_in& address);
