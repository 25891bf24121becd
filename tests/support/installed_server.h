#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

using Lines = std::vector<std::string>;

/// The stand-in server that the sandbox has installed, which does not run at first.
class InstalledServer {
  public:
    static constexpr const char* config = "/var/opt/teluma/run/teluma.cfg";
    static constexpr const char* filters = "/var/opt/teluma/run/smtp.filters";
    static constexpr const char* pid_file = "/var/opt/teluma/run/teluma.pid";
    static constexpr const char* binary = "/opt/teluma/bin/teluma";

    /// Starts it; the test ends as failed if that does not work.
    void start() const;

    /// Replaces the fault rules; or what it has saved, in the form of its state file.
    void faults(const std::string& rules) const;
    void save(const std::string& state) const;

    /// Puts a shell script in place of its executable, which that of wrapBy() finds as `$0.real`.
    void replaceBy(const std::string& script) const;
    void wrapBy(const std::string& script) const;

    /// Gives its files to the user "teluma", as whom it runs from now on whoever starts it.
    void runAsItsUser() const;

    /// The process that the pid file names; 0 without one.
    pid_t pid() const;

    /// The process that was started last according to the log, 0 without one; whether it runs.
    pid_t lastStarted() const;
    bool isRunning() const;

    void waitForEnd() const;

    /// The commands that it has received, `-A PASSWORD` included.
    Lines commands() const;

    /// The records that it has saved last and that begin with these words.
    Lines saved(const std::string& words) const;

    /// The administrator's password as it has it.
    std::string password() const;

    /// All lines of its log, notes ("# ...") included; and a wait for one of them.
    Lines log() const;
    void waitForLog(const std::string& line) const;

    /// Waits for its end, starts it again, logs in and returns all that it knows, as its state
    /// file.
    std::string stateAfterRestart(const std::string& password) const;
};

/// The lines of `text` that begin with `start` and a space, without that.
Lines records(const std::string& text, const std::string& start);
