#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

#include "tests/support/descriptor.h"
#include "tests/support/process.h"

/// What a program is started with.
struct SessionCommand {
    std::vector<std::string> arguments;    // the program first, found by PATH unless it has a slash
    std::vector<std::string> environment;  // all of it, "NAME=value"
    std::string directory;                 // where it starts; empty: where this process is
};

/// A program in the foreground of a terminal, as a login shell would have started it.
///
/// Another process leads the session: at the end of its leader the kernel hangs the terminal up and
/// resets its modes, and nobody could see how the program left them. Both processes end with this
/// one, even if that is killed.
class TerminalSession {
  public:
    /// Starts the program with default signal actions, none blocked, on the terminal and without
    /// any other descriptor. std::system_error if it cannot be run.
    TerminalSession(const Descriptor& terminal, SessionCommand command);

    /// Kills the program, if it has not ended, and the session.
    ~TerminalSession();

    pid_t program() const { return programPid; }

    /// Readable when the program has ended and ended() has not yet told so; for poll(2).
    int descriptor() const { return report.get(); }

    /// How the program ended, or nothing while it runs; never waits.
    std::optional<ExitStatus> ended();

  private:
    /// The process that leads the session; killed and waited for.
    struct Leader {
        pid_t pid = -1;

        ~Leader();
    };

    Descriptor report;
    Leader leader;
    pid_t programPid = -1;
    std::optional<ExitStatus> status;
};
