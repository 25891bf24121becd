#pragma once

#include <string>

/// Measure the wizard, a path, by itself and print the samples.

/// The size of its file, with and without symbols, and the bytes of a walk through all screens:
/// rows of `own_rows`.
void measure_size_and_walk(const std::string& wizard);

/// How the list of interfaces is drawn and moved in, on the WebAdmin screen in a terminal of 60
/// lines and 100 columns: the samples of `list_rows` for a host on which it has `rows` rows. Throws
/// std::runtime_error if it has another number of them.
void measure_list(const std::string& wizard, int rows, int rounds);

/// The time of an apply run, in all and by what it was spent for: rows of `own_rows`. The host,
/// here a sandbox, bears only one run.
void measure_apply_time(const std::string& wizard);

/// The system calls of each step of an apply run: the samples of `calls_row`. The host bears only
/// one run.
void count_apply_calls(const std::string& wizard);
