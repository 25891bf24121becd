#pragma once

#include <iosfwd>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/files.h"
#include "tools/bench/measured_program.h"

/// One system call in a log of strace.
struct TracedCall {
    int process = 0;
    std::string name;
    std::string arguments;  ///< all after the opening bracket, the result included
    double begin = 0;       ///< seconds, since the epoch
    double seconds = 0;     ///< that it lasted; 0 where the log does not say
};

struct Trace {
    std::vector<TracedCall> calls;  ///< in the order in which they ended
    std::map<int, double> ends;     ///< when a process has ended, in seconds since the epoch
};

/// Reads a log of strace -f -ttt, with -T or without. A call that is interrupted by those of other
/// processes stands in two pieces there and is one call here; one that has not ended is left out,
/// and so are signals.
Trace read_trace(std::istream& log);

/// A program under strace, started in a terminal of 24 lines and 80 columns.
class TracedProgram {
  public:
    /// `options` are strace's that choose what it writes down and how.
    TracedProgram(const std::vector<std::string>& options, const std::vector<std::string>& command);

    MeasuredProgram& operator*() { return program; }
    MeasuredProgram* operator->() { return &program; }

    /// The log so far. A call of a program that rests is in it if it has ended.
    Trace trace() const;

  private:
    std::string log() const { return directory / "calls"; }

    TempDir directory;
    MeasuredProgram program;
};

/// What strace needs to be told so that terminal_writes() can count.
extern const std::vector<std::string> options_for_writes;

/// How many of the calls, of a log with what descriptors are open on, put bytes on a terminal.
int terminal_writes(const Trace& trace);

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
