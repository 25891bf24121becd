#pragma once

#include <string>

namespace standin {

/// The record of what the server was told: one line for each command, exactly as it was received,
/// without its CR LF. Lines that begin with "# " are the server's own notes (start, stop,
/// connections, faults). The line typed at a password prompt is recorded like a command.
///
/// The file is opened for each line, so it may be moved away or removed while the server runs. A
/// line that can't be written is lost; the server goes on.
class CommandLog {
  public:
    explicit CommandLog(std::string path);

    /// Adds a line with the command as received.
    void command(const std::string& line) const;

    /// Adds the line "# " and `text`.
    void note(const std::string& text) const;

  private:
    std::string path;
};

}  // namespace standin
