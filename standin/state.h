#pragma once

#include <map>
#include <string>
#include <vector>

/// A listener service: where it listens and whether it runs.
struct Service {
    bool enabled = false;
    std::vector<std::string> listeners;  ///< "A:P" each, in the order they were added
    std::string certfile;                ///< empty: none set
};

/// A mail domain. Its accounts stand by name, each with its aliases.
struct Domain {
    std::string location;
    std::string postmaster_password;
    std::vector<std::string> aliases;
    std::map<std::string, std::vector<std::string>> accounts;
};

/// Everything that commands can change.
struct State {
    std::string primary_domain;  ///< empty: none set
    std::vector<std::string> services;
    std::map<std::string, Service> listener_services;  ///< by their command names, all of them
    std::map<std::string, Domain> domains;
};

/// A state with every listener service and nothing else.
State empty_state();

/// A domain as it is created: with the one account "postmaster".
Domain new_domain(const std::string& location, const std::string& postmaster_password);

/// True when a domain has the name, or any domain has it as an alias.
bool domain_name_is_taken(const State& state, const std::string& name);

/// True when an account of `domain` has the name, or any of its accounts has it as an alias.
bool account_name_is_taken(const Domain& domain, const std::string& name);

/// True when `address` collides with a listener of any service. `address` is a listener address.
bool listener_is_taken(const State& state, const std::string& address);

/// The command name ("config NAME") of the listener service with the section `config_name` in
/// teluma.cfg, which is also its name in the list of services; empty when there is none.
std::string service_of_section(const std::string& config_name);

/// True for a name that may stand in the list of services.
bool is_service(const std::string& name);
