#pragma once

namespace standin {

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

}  // namespace standin
