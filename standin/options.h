#pragma once

#include <optional>
#include <string>

namespace standin {

/// How to run:
///
///     teluma [-f] [-r DIRECTORY]            runs the server
///     teluma [-r DIRECTORY] -A PASSWORD     sets the administrator password
struct Options {
    std::string run_directory = "/var/opt/teluma/run";  ///< -r, made absolute
    bool foreground = false;                            ///< -f: does not become a daemon
    std::optional<std::string> password;                ///< -A
};

/// Reads the command line into `options`. False, with a message for the user in `problem`, when it
/// is not as above or there is no such directory.
bool parse_options(int argument_count, char** arguments, Options& options, std::string& problem);

}  // namespace standin
