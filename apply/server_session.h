#pragma once

#include <sys/types.h>

#include <cstdint>

#include "wizard/base/descriptor.h"

/// What the wizard has learned of the server, and its one session with the server's command-line
/// interface. The session is opened after the server has been restarted and stays open until the
/// program ends.
struct ServerSession {
    /// The server's process id as read last: 0 while none is known, below 0 where the pid file says
    /// nothing that counts.
    int pid = 0;

    /// The user who has written that, whose right it takes to signal the process.
    uid_t pid_author = 0;

    /// Where the command-line interface listens, as read from the configuration file last: a host
    /// name or address, empty while unknown, and a port.
    char cli_host[256] = "";
    std::uint16_t cli_port = 0;

    /// The connection, if there is one.
    Descriptor socket;

    /// Whether its other end has been seen to belong to the wizard's own user, root: not so where
    /// that is the user "teluma", or where nothing could be looked at.
    bool peer_is_root = false;

    /// How often configuring WebAdmin has failed.
    unsigned webadmin_failures = 0;

    /// The number of spaces and tabs before the "=" of the configuration line whose key was
    /// extracted last.
    unsigned key_indent = 0;

    /// There was no memory for such a key: the wizard is to end.
    bool out_of_memory = false;
};

/// The one of this run. A test makes it anew: `server_session = {}`.
inline ServerSession server_session;
