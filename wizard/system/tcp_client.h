#pragma once

#include <netinet/in.h>

/// Connecting to a TCP port in a way that signals can come in while the program waits.

/// Creates an IPv4 TCP socket that never blocks and that child processes don't inherit. Returns its
/// descriptor, which the caller closes, or -1 with errno set.
int open_tcp_socket();

/// Stores the address that look_up_host() finds for `host`, and the low 16 bits of `port`, in
/// `address`. Returns false, with errno set, when the host has none.
bool resolve_host(const char* host, int port, sockaddr_in& address);

/// Connects a socket of open_tcp_socket(), as long as that takes, letting signals in. Returns 0 or
/// the errno of the failure.
int connect_socket(int descriptor, const sockaddr_in& address);
