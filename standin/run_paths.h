#pragma once

#include <string>

namespace standin {

/// Where the server keeps its files. All of them stand in one run directory.
struct RunPaths {
    std::string config;        ///< teluma.cfg, read at start, never written
    std::string pid;           ///< teluma.pid, one line with the process id
    std::string state;         ///< teluma.state, what "save config" saves
    std::string password;      ///< teluma.password, the administrator password and nothing else
    std::string log;           ///< teluma.log, every command received
    std::string faults;        ///< teluma.faults, how to misbehave; need not exist
    std::string faults_seen;   ///< teluma.faults.seen, how often each fault rule was met
    std::string smtp_filters;  ///< smtp.filters, unless teluma.cfg names another file
};

/// The files' paths below `run_directory`, which has no "/" at its end.
RunPaths run_paths(const std::string& run_directory);

}  // namespace standin
