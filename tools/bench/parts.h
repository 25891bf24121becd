#pragma once

#include <cstddef>
#include <string>

#include "tests/e2e/wizard_run.h"
#include "tools/bench/measured_program.h"

/// The parts of ./bench. Each measures and prints samples; `wizard` and `floor` are the programs'
/// paths.

/// The wizard beside the programs that people use instead: time, memory, bytes and writes of
/// `compared_rows`. The programs take turns for so many rounds, at most five for bytes and writes,
/// so that what else the machine does falls on all of them.
void compare(const std::string& wizard, const std::string& floor, int rounds);

/// The processor time of these programs when they have nothing to do. It takes a quarter of a
/// minute.
void compare_idleness(const std::string& wizard, const std::string& floor);

/// The size of the wizard's file, with and without symbols, and the bytes of a walk through all
/// screens: rows of `own_rows`.
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

/// Takes the wizard from its first screen to another one, with nothing typed but passwords. Returns
/// the number of bytes that it writes on the way. Throws std::runtime_error if it does not get
/// there.
size_t walk(MeasuredProgram& wizard, Stop end);
