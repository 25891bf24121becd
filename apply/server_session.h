#pragma once

#include <sys/types.h>

#include <cstdint>

#include "wizard/base/descriptor.h"

/// What the wizard has learned of the server, and its one session with the server's command-line
/// interface, which stays open until the program ends.
struct ServerSession {
    int pid = 0;           ///< the server's, as read last; 0: unknown, below 0: not to be believed
    uid_t pid_author = 0;  ///< who has written that, whose right it takes to signal the process

    /// Where the command-line interface listens, as read from the configuration file last: a host
    /// name or address, empty while unknown, and a port.
    char cli_host[256] = "";
    std::uint16_t cli_port = 0;

    Descriptor socket;  ///< the connection, if there is one

    /// Whether its other end has been seen to belong to the wizard's own user, root: not so where
    /// that is the user "teluma", or where nothing could be looked at.
    bool peer_is_root = false;

    unsigned webadmin_failures = 0;  ///< how often configuring WebAdmin has failed
    unsigned key_indent = 0;         ///< spaces and tabs up to the "=" after the key extracted last
    bool out_of_memory = false;      ///< there was none for such a key: the wizard is to end
};

/// The one of this run. A test makes it anew: `server_session = {}`.
inline ServerSession server_session;
