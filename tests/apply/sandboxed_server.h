#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

using Lines = std::vector<std::string>;

/// The stand-in server, as the sandbox that the test runs in has it installed. It is not running at
/// first; whoever starts it, it ends with the sandbox.
class SandboxedServer {
  public:
    static constexpr const char* config = "/var/opt/teluma/run/teluma.cfg";
    static constexpr const char* filters = "/var/opt/teluma/run/smtp.filters";
    static constexpr const char* pid_file = "/var/opt/teluma/run/teluma.pid";
    static constexpr const char* binary = "/opt/teluma/bin/teluma";

    /// Starts it. The test ends as failed when that does not work.
    void start() const;

    /// Replaces the fault rules, in the form that its README tells of.
    void faults(const std::string& rules) const;

    /// The commands that it has received, with "-A PASSWORD", in order.
    Lines commands() const;

    /// The same behind the last `command`.
    Lines commandsBehind(const std::string& command) const;

    /// The records of what it has saved last that begin with these words.
    Lines saved(const std::string& words) const;

    /// The administrator's password as it has it.
    std::string password() const;

    /// The process that was started last; 0 if none was.
    pid_t process() const;

  private:
    Lines log() const;
};
