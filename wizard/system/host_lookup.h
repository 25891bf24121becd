#pragma once

#include <netinet/in.h>

/// Finds the first IPv4 address of `host`, a name or a dotted address. As long as a name server
/// keeps the wizard waiting, signals are let in. Returns false when the host has no address; errno
/// is then what gethostbyname(3) left.
bool look_up_host(const char* host, in_addr& address);
