#pragma once

#include <string>

#include "state.h"

namespace standin {

/// `state` as the text of the state file. Each line is one record, its words divided by blanks;
/// what is not set has no line:
///
///     services NAME...
///     primarydomain DOMAIN
///     listener SERVICE ADDRESS
///     enable SERVICE yes
///     certfile SERVICE FILE
///     domain DOMAIN LOCATION PASSWORD
///     domainalias DOMAIN ALIAS
///     account DOMAIN ACCOUNT
///     accountalias DOMAIN ACCOUNT ALIAS
///
/// The last value of a line goes to the line's end and may hold blanks.
std::string state_to_text(const State& state);

/// Reads such a text into `state`. Returns an empty text, or what is wrong with which line; `state`
/// is then half read. A record must come after the one that makes what it belongs to.
std::string state_from_text(const std::string& text, State& state);

}  // namespace standin
