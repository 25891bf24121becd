#pragma once

#include <sys/types.h>

#include <string>

/// The files of the server. All of them stand in one run directory, which has no "/" at its end.
struct RunPaths {
    std::string directory;
    std::string config = directory + "/teluma.cfg";          ///< read at start, never written
    std::string pid = directory + "/teluma.pid";             ///< one line with the process id
    std::string state = directory + "/teluma.state";         ///< what "save config" saves
    std::string password = directory + "/teluma.password";   ///< the administrator's, nothing else
    std::string log = directory + "/teluma.log";             ///< every command received
    std::string faults = directory + "/teluma.faults";       ///< how to misbehave; need not exist
    std::string faults_seen = faults + ".seen";              ///< how often each rule was met
    std::string smtp_filters = directory + "/smtp.filters";  ///< unless teluma.cfg names another
};

/// Reads the whole file at `path` into `text`. False, with `errno` set, when it can't be read.
bool read_all(const std::string& path, std::string& text);

/// Puts a file with `text` and `mode` at `path` so that a reader sees the old file or the new one,
/// never a part: through "PATH.new" in the same directory, renamed. False, with `errno` set and
/// the old file still there, when that fails.
bool replace_file(const std::string& path, const std::string& text, mode_t mode);

/// Writes this process's id and a line feed to the file at `path`, whole or not at all. False, with
/// `errno` set, when that fails.
bool write_pid_file(const std::string& path);

/// Removes the file at `path` if it names this process; the file of a server that was started later
/// stays.
void remove_pid_file(const std::string& path);

/// The record of what the server was told: one line for each command, exactly as it was received,
/// without its CR LF. Lines that begin with "# " are the server's own notes (start, stop,
/// connections, faults). The line typed at a password prompt is recorded like a command.
///
/// The file (mode 600) is opened for each line, so it may be moved away or removed while the server
/// runs. A line that can't be written is lost; the server goes on.
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
