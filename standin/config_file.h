#pragma once

#include <string>

#include "state.h"

/// What teluma.cfg says.
struct Config {
    std::string cli_address;   ///< "HOST:PORT" of the cli section's first listener; or empty
    std::string smtp_filters;  ///< the SMTP filters script; empty when the file names none
    State state;               ///< services and listeners, for a server that has saved nothing yet
};

/// Reads the text of a configuration file:
///
///     services = ( smtpIncoming cli )
///     smtpFiltersFile = "/path/of/the/script"
///     cli = {
///         enable = yes
///         listeners = (
///             {
///                 address = 127.0.0.1:9091
///             }
///         )
///     }
///
/// A "#" makes the rest of its line a comment. A key is what stands before the first "=", its
/// spaces and tabs taken out. A value that ends in an opening bracket opens a block; a line that
/// begins with a closing one ends it. Keys that are not known and brackets too many or too few are
/// passed over, so that a file which a careless editor has cut or doubled at its end still works.
Config parse_config(const std::string& text);
