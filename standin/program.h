#pragma once

#include "options.h"

namespace standin {

/// Does what the command line asked for and returns the exit status: 0 when it worked (for a
/// daemon: once it listens and its pid file is written), 1 when it didn't, after a message on
/// standard error.
int run_program(const Options& options);

}  // namespace standin
