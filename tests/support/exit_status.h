#pragma once

#include <iosfwd>

/// How a process ended: by itself with an exit code, or by a signal. Exactly one of the two is set.
struct ExitStatus {
    int code = -1;   // 0 to 255, or -1 when a signal ended it
    int signal = 0;  // or 0 when it ended by itself
};

/// The status of a process that ended with `code`: `EXPECT_EQ(program.waitExit(), exited(0))`.
ExitStatus exited(int code);

/// The status of a process that was ended by `signal`.
ExitStatus killed_by(int signal);

/// Reads the status that waitpid(2) gives for a process that has ended.
ExitStatus from_wait_status(int wait_status);

bool operator==(const ExitStatus& left, const ExitStatus& right);
bool operator!=(const ExitStatus& left, const ExitStatus& right);

/// Writes "exit status 1" or "signal 9 (Killed)".
std::ostream& operator<<(std::ostream& out, const ExitStatus& status);
