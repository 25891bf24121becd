#include "state.h"

#include <algorithm>

#include "address.h"
#include "text.h"

namespace {

/// A service with listeners has two names: one for commands and one for the configuration.
struct ServiceName {
    const char* command;
    const char* config;
};

const ServiceName listener_services[] = {
    {"smtp-incoming", "smtpIncoming"}, {"pop3", "pop3"}, {"imap", "imap"}, {"webmail", "webmail"},
    {"webadmin", "webadmin"},          {"cli", "cli"},
};

}  // namespace

State empty_state() {
    State state;
    for (const ServiceName& name : listener_services) state.listener_services[name.command];
    return state;
}

Domain new_domain(const std::string& location, const std::string& postmaster_password) {
    return {location, postmaster_password, {}, {{"postmaster", {}}}};
}

bool domain_name_is_taken(const State& state, const std::string& name) {
    return state.domains.count(name) != 0 ||
           std::any_of(state.domains.begin(), state.domains.end(),
                       [&](const auto& entry) { return contains(entry.second.aliases, name); });
}

bool account_name_is_taken(const Domain& domain, const std::string& name) {
    return domain.accounts.count(name) != 0 ||
           std::any_of(domain.accounts.begin(), domain.accounts.end(),
                       [&](const auto& entry) { return contains(entry.second, name); });
}

bool listener_is_taken(const State& state, const std::string& address) {
    for (const auto& [name, service] : state.listener_services) {
        for (const std::string& listener : service.listeners) {
            if (listeners_collide(listener, address)) return true;
        }
    }
    return false;
}

std::string service_of_section(const std::string& config_name) {
    for (const ServiceName& name : listener_services) {
        if (config_name == name.config) return name.command;
    }
    return {};
}

bool is_service(const std::string& name) {
    return !service_of_section(name).empty() ||
           contains({"log", "processing", "smtpOutgoing"}, name);
}
