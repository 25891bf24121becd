#pragma once

#include <string>
#include <vector>

#include "actions.h"
#include "context.h"

namespace standin {

/// Where a command leaves the session.
enum class Move {
    stay,     ///< in the same context
    enter,    ///< in the context that the command names
    keep,     ///< one context further out, taking the draft along
    discard,  ///< one context further out, without the draft; at the outermost one, stay
};

/// One row of the command table.
struct Command {
    unsigned contexts;  ///< sum of the contexts in which it is valid
    const char* form;   ///< its words; "%" is any one word, "%..." the rest of the line
    Action action;
    Move move;
    Context entered;  ///< for Move::enter
};

/// The command that a line holds, with its arguments; or why it holds none.
struct Match {
    const Command* command = nullptr;
    std::vector<std::string> arguments;
    Refusal refusal = nullptr;
};

/// Looks `line` up among the commands that are valid in `context`. Whatever fits none of them is
/// refused: as malformed, as not logged in (everything but a login, before one), as valid in
/// another context only, or as unknown. A line with control characters is malformed.
Match find_command(Context context, const std::string& line);

}  // namespace standin
