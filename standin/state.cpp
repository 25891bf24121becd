#include "state.h"

#include <algorithm>

#include "address.h"
#include "service_names.h"

namespace standin {

namespace {

bool contains(const std::vector<std::string>& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

}  // namespace

State empty_state() {
    State state;
    for (const ServiceName& name : listener_services()) {
        state.listener_services[name.command];
    }
    return state;
}

Domain new_domain(const std::string& location, const std::string& postmaster_password) {
    Domain domain;
    domain.location = location;
    domain.postmaster_password = postmaster_password;
    domain.accounts["postmaster"];
    return domain;
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
    for (const auto& entry : state.listener_services) {
        const std::vector<std::string>& listeners = entry.second.listeners;
        if (std::any_of(listeners.begin(), listeners.end(), [&](const std::string& listener) {
                return listeners_collide(listener, address);
            })) {
            return true;
        }
    }
    return false;
}

}  // namespace standin
