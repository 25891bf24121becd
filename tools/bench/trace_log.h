#pragma once

#include <iosfwd>
#include <map>
#include <string>
#include <vector>

/// One system call in a log of strace.
struct TracedCall {
    int process = 0;
    std::string name;
    std::string arguments;  ///< all behind the opening bracket, the result included
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

/// The first text in quotes among a call's arguments, as strace -xx writes it: \x41 for "A". Empty
/// if there is none.
std::string first_text(const TracedCall& call);
