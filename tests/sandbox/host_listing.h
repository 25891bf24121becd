#pragma once

#include <string>

/// All that a sandbox could change of its host, as text for comparing: every file below /etc,
/// /usr/sbin, /opt and /var/opt with its kind, mode, owner, size, times, link target and a hash of
/// its content; the mounts; the network interfaces with their addresses and flags; the host name
/// and the NIS domain name. One line for each fact, so that a difference names what was changed.
///
/// A file that is larger than 1 MiB or can't be read is listed without its hash. System calls that
/// fail throw std::system_error.
std::string list_host();
