#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

/// Changes to the environment: the new value of a variable, or nothing to take it out.
using EnvironmentChanges = std::map<std::string, std::optional<std::string>>;

/// This process's environment with the changes, as "NAME=value" strings.
std::vector<std::string> changed_environment(const EnvironmentChanges& changes);

/// The strings as exec(3) takes them: pointers, then a null pointer. They point into `strings`,
/// which must stay alive and unchanged.
std::vector<char*> exec_array(std::vector<std::string>& strings);
