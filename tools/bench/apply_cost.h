#pragma once

#include <string>

/// Both make a whole apply run, of which a host, here a sandbox, bears only one.

/// Prints the time that a run takes, and what is left of it without the sleeps that it has to make
/// and the time that it waits for the server.
void measure_apply_time(const std::string& wizard);

/// Prints the number of system calls of each step.
void count_apply_calls(const std::string& wizard);
