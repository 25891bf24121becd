#pragma once

#include <sys/types.h>

#include <functional>
#include <string>

#include "tests/support/process.h"

/// The id of the user "teluma", who has the group of the same number; 0 in a sandbox that has no
/// other user than its superuser.
uid_t server_user();

/// Runs `piece` in a child process of this user and of the group of the same number alone. Returns
/// how it ended: with 0 unless the piece ends it otherwise.
ExitStatus as_user(uid_t user, const std::function<void()>& piece);

/// Takes the user "teluma" out of the sandbox's users.
void remove_server_account();

/// Expects that a file belongs to the user "teluma" and to its group.
void expect_server_owns(const std::string& path);
