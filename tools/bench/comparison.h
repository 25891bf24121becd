#pragma once

#include <string>

/// Measure the wizard beside the programs that people use instead, and print the samples of
/// `compared_rows`; `wizard` and `floor` are the programs' paths.

/// Time, memory, bytes and writes. The programs take turns for so many rounds, at most five for
/// bytes and writes, so that what else the machine does falls on all of them.
void compare(const std::string& wizard, const std::string& floor, int rounds);

/// The processor time of programs that have nothing to do. It takes a quarter of a minute.
void compare_idleness(const std::string& wizard, const std::string& floor);
