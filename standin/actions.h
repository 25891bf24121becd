#pragma once

#include <string>
#include <vector>

#include "store.h"

/// What a session works on while it is in a context: a copy of the state, which "commit" hands to
/// the context outside and "back" throws away, and the things that the context is about.
struct Draft {
    State state;
    std::string user;     ///< who wants to log in
    std::string service;  ///< command name of the listener service that is being configured
    std::string domain;   ///< name of the domain that is being updated
    std::string account;  ///< name of the account that is being updated
};

/// What an action is given.
struct Call {
    const std::vector<std::string>& arguments;  ///< one for each "%" of the command's form
    const Store& store;
    Draft& draft;                     ///< of the context that the command stands in or enters
    std::vector<std::string>& lines;  ///< lines of the reply before "+OK:"; may be added to
};

/// Why a command is refused, a fixed text; null when it is not.
using Refusal = const char*;

/// Carries out a command. When it refuses, its draft is as it was before or thrown away.
using Action = Refusal (*)(Call& call);

/// Nothing to be done: the command only moves between contexts.
Refusal just_move(Call& call);

Refusal open_login(Call& call);
Refusal save_config(Call& call);
Refusal create_domain(Call& call);
Refusal open_domain(Call& call);
Refusal open_account(Call& call);
Refusal add_domain_alias(Call& call);
Refusal add_account_alias(Call& call);
Refusal set_primary_domain(Call& call);
Refusal show_services(Call& call);
Refusal show_smtp_filters_file(Call& call);
Refusal set_services(Call& call);
Refusal open_service(Call& call);
Refusal list_listeners(Call& call);
Refusal add_listener(Call& call);
Refusal remove_listener(Call& call);
Refusal set_enable(Call& call);
Refusal set_certfile(Call& call);
