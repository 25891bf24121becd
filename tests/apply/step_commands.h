#pragma once

#include <string>
#include <vector>

#include "tests/support/installed_server.h"

/// The commands that the steps of the apply sequence send for the answers of ApplyCase, as the
/// server logs them.

Lines login_commands();
Lines domain_commands();
Lines alias_commands();

/// For a server that listens at `old_address`.
Lines webadmin_commands(const std::string& old_address);
Lines listener_commands(const std::string& service, const std::string& old_address,
                        const std::string& new_address);

/// For the optional services that are enabled, each with a blank before it.
Lines services_commands(const std::string& enabled);

Lines relay_commands();

/// All of them one after another.
Lines joined_commands(const std::vector<Lines>& steps);
