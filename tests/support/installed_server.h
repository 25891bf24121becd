#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

using Lines = std::vector<std::string>;

/// The stand-in server as the sandbox that the test runs in has it installed, at the paths that the
/// wizard knows. It is not running at first; whoever starts it, it ends with the sandbox.
class InstalledServer {
  public:
    static constexpr const char* config = "/var/opt/teluma/run/teluma.cfg";
    static constexpr const char* filters = "/var/opt/teluma/run/smtp.filters";
    static constexpr const char* pid_file = "/var/opt/teluma/run/teluma.pid";
    static constexpr const char* binary = "/opt/teluma/bin/teluma";

    /// Starts it; the test ends as failed if that does not work.
    void start() const;

    /// Replaces the fault rules, in the form that its README tells of.
    void faults(const std::string& rules) const;

    /// Replaces what it has saved, in the form of its state file.
    void save(const std::string& state) const;

    /// Puts a shell script in the place of its executable.
    void replaceBy(const std::string& script) const;

    /// The same; the script knows the executable as `$0.real`.
    void wrapBy(const std::string& script) const;

    /// Gives its files to the user "teluma", as whom it runs from now on whoever starts it.
    void runAsItsUser() const;

    /// The process that the pid file names; 0 without one.
    pid_t pid() const;

    /// The process that was started last, by the log, 0 if none was; and whether it is still there.
    pid_t lastStarted() const;
    bool isRunning() const;

    /// Waits until it is not, as after a signal.
    void waitForEnd() const;

    /// The commands that it has received, `-A PASSWORD` included, in order.
    Lines commands() const;

    /// Those that followed the last `command`; nothing without it.
    Lines commandsAfter(const std::string& command) const;

    /// The records of what it has saved last that begin with these words, which they keep.
    Lines saved(const std::string& words) const;

    /// The administrator's password as it has it.
    std::string password() const;

    /// All lines of its log, notes ("# ...") included.
    Lines log() const;

    /// Waits until the log holds this line.
    void waitForLog(const std::string& line) const;

    /// Waits for its end, starts it again, logs in with the administrator's password and returns
    /// everything that it knows, in the form of its state file.
    std::string stateAfterRestart(const std::string& password) const;
};

/// The lines of `text` that begin with `start` and a space, without that.
Lines records(const std::string& text, const std::string& start);
