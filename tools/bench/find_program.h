#pragma once

#include <string>

/// The path of a program, as a shell would find it by PATH. Throws std::runtime_error if it does
/// not.
std::string find_program(const std::string& name);
