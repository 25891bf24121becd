#include "actions.h"

#include <algorithm>

#include "address.h"
#include "text.h"

namespace {

const Refusal malformed = "malformed arguments";

Domain& current_domain(Call& call) { return call.draft.state.domains[call.draft.domain]; }

Service& current_service(Call& call) {
    return call.draft.state.listener_services[call.draft.service];
}

/// `text` with spaces up to the width of the longest address.
std::string address_cell(std::string text) {
    const std::size_t longest = std::string("255.255.255.255:65535").size();
    text.resize(std::max(text.size(), longest), ' ');
    return text;
}

}  // namespace

Refusal just_move(Call& /*call*/) { return nullptr; }

Refusal open_login(Call& call) {
    call.draft.user = call.arguments[0];
    return nullptr;
}

Refusal save_config(Call& call) { return call.store.save() ? nullptr : "the state can't be saved"; }

Refusal create_domain(Call& call) {
    const std::string& name = call.arguments[0];
    if (domain_name_is_taken(call.draft.state, name)) return "this domain exists already";
    call.draft.state.domains[name] = new_domain(call.arguments[1], call.arguments[2]);
    return nullptr;
}

Refusal open_domain(Call& call) {
    call.draft.domain = call.arguments[0];
    return call.draft.state.domains.count(call.draft.domain) != 0 ? nullptr : "no such domain";
}

Refusal open_account(Call& call) {
    call.draft.account = call.arguments[0];
    const bool exists = current_domain(call).accounts.count(call.draft.account) != 0;
    return exists ? nullptr : "no such account";
}

Refusal add_domain_alias(Call& call) {
    const std::string& alias = call.arguments[0];
    if (domain_name_is_taken(call.draft.state, alias))
        return "this domain or domain alias exists already";
    current_domain(call).aliases.push_back(alias);
    return nullptr;
}

Refusal add_account_alias(Call& call) {
    const std::string& alias = call.arguments[0];
    if (account_name_is_taken(current_domain(call), alias))
        return "this account or account alias exists already";
    current_domain(call).accounts[call.draft.account].push_back(alias);
    return nullptr;
}

Refusal set_primary_domain(Call& call) {
    const std::string& name = call.arguments[0];
    if (call.draft.state.domains.count(name) == 0) return "no such domain";
    call.draft.state.primary_domain = name;
    return nullptr;
}

Refusal show_services(Call& call) {
    call.lines.push_back("services = ( " + joined(call.draft.state.services) + " )");
    return nullptr;
}

Refusal show_smtp_filters_file(Call& call) {
    call.lines.push_back("smtpFiltersFile = \"" + call.store.smtp_filters + "\"");
    return nullptr;
}

Refusal set_services(Call& call) {
    std::vector<std::string> words = split_words(call.arguments[0]);
    if (words.size() < 3 || words.front() != "(" || words.back() != ")") return malformed;
    words.pop_back();
    words.erase(words.begin());
    if (!std::all_of(words.begin(), words.end(), is_service)) return malformed;
    call.draft.state.services = words;
    return nullptr;
}

Refusal open_service(Call& call) {
    call.draft.service = call.arguments[0];
    const bool exists = call.draft.state.listener_services.count(call.draft.service) != 0;
    return exists ? nullptr : "no such service";
}

Refusal list_listeners(Call& call) {
    const Service& service = current_service(call);
    call.lines.push_back(address_cell("Address") + " | Enabled");
    call.lines.push_back(std::string(address_cell("").size(), '-') + "-+--------");
    for (const std::string& listener : service.listeners)
        call.lines.push_back(address_cell(listener) + " | " + (service.enabled ? "yes" : "no"));
    return nullptr;
}

Refusal add_listener(Call& call) {
    const std::string& address = call.arguments[0];
    if (!is_listener_address(address)) return malformed;
    if (listener_is_taken(call.draft.state, address) || address_is_in_use(address))
        return "this address is in use";
    current_service(call).listeners.push_back(address);
    return nullptr;
}

Refusal remove_listener(Call& call) {
    std::vector<std::string>& listeners = current_service(call).listeners;
    const auto found = std::find(listeners.begin(), listeners.end(), call.arguments[0]);
    if (found == listeners.end()) return "no such listener";
    listeners.erase(found);
    return nullptr;
}

Refusal set_enable(Call& call) {
    const std::string& choice = call.arguments[0];
    if (choice != "yes" && choice != "no") return malformed;
    current_service(call).enabled = choice == "yes";
    return nullptr;
}

Refusal set_certfile(Call& call) {
    current_service(call).certfile = call.arguments[0];
    return nullptr;
}
