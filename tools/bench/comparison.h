#pragma once

#include <string>

/// Prints the table of the wizard beside the programs that people use instead: `wizard` and `floor`
/// are the programs' paths.
void compare(const std::string& wizard, const std::string& floor);
