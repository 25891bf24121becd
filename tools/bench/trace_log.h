#pragma once

#include <string>
#include <vector>

/// One system call in a log of strace -f -T.
struct TracedCall {
    int process = 0;
    std::string text;    ///< all that stands behind the process id
    double seconds = 0;  ///< that it lasted; 0 where the log does not say
};

/// The calls in the order in which they ended; none stands there twice, signals not at all.
std::vector<TracedCall> read_trace(const std::string& path);
