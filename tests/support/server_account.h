#pragma once

#include <string>

/// Takes the user "teluma" out of the sandbox's users.
void remove_server_account();

/// Expects that a file belongs to the user "teluma" and to its group.
void expect_server_owns(const std::string& path);
