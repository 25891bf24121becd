#pragma once

#include <sys/types.h>

/// Stores the user and the group of the server's account, "teluma" (getpwnam(3)). As long as a
/// directory service keeps the wizard waiting, signals are let in. Returns false, with both as they
/// were, when there is no such account or it can't be asked for.
bool find_server_account(uid_t& user, gid_t& group);

/// Gives an open file to the user and group of the server's account. Returns 0, or 1 when there is
/// no such account or the owner could not be changed.
int give_to_server(int file);
