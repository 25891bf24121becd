#pragma once

#include <string>
#include <vector>

#include "actions.h"

/// Where in the command tree a session is. Each is one bit, so that a set of them is their sum.
enum Context : unsigned {
    login_context = 1U << 0,       ///< connected, nobody logged in
    password_context = 1U << 1,    ///< the next line is a password
    root_context = 1U << 2,        ///< logged in
    server_context = 1U << 3,      ///< config server
    service_context = 1U << 4,     ///< config SERVICE, in the server's
    sslcontrol_context = 1U << 5,  ///< config sslcontrol, in a service's
    create_context = 1U << 6,      ///< create domain: a domain that is not there before commit
    domain_context = 1U << 7,      ///< update domain
    account_context = 1U << 8,     ///< update account, in a domain's
};

/// The text that ends every reply in `context`: "> " at its end and no ">" before.
const char* prompt_of(Context context);

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
