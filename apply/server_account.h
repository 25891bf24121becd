#pragma once

#include <sys/types.h>

/// Stores the user and the group of the server's account, "teluma" (getpwnam(3)). As long as a
/// directory service keeps the wizard waiting, signals are let in. Returns false, with both as they
/// were, when there is no such account or it can't be asked for.
bool find_server_account(uid_t& user, gid_t& group);
