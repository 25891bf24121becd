#pragma once

#include <string>
#include <utility>
#include <vector>

#include "tools/bench/trace_log.h"

/// What of an apply run's time is not the wizard's own, in seconds.
struct OthersTime {
    double asleep = 0;  ///< it slept, as it has to between two looks and before it connects
    double server = 0;  ///< it waited for the server's answer, or a command of the server ran
};

/// Finds it in a log, written with -y, of the calls execve, ppoll, pselect6 and wait4 of the
/// process `wizard` and its children since the moment `from`. `server` is the path of the server's
/// program.
OthersTime others_time(const Trace& trace, int wizard, double from, const std::string& server);

/// The steps of an apply run, each with the number of system calls that the process `wizard` made
/// from the moment at which the step's line of progress stood on the terminal until the next one's
/// did; what came before the first line and after `from` is "opening the progress box". The log,
/// written with -xx, must hold all of the process's calls from its start, in a terminal of 24 lines
/// and 80 columns.
std::vector<std::pair<std::string, int>> calls_by_step(const Trace& trace, int wizard, double from);
