#pragma once

#include <string>

/// Ends the process with SIGABRT, as a crash does, unless `holds`; says what has not held.
void require(bool holds, const char* what);

/// The same for two texts that must be equal; both are printed, with what can't be printed escaped.
void require_equal(const std::string& actual, const std::string& expected, const char* what);
