#include "actions.h"

namespace standin {

namespace {

Domain& current_domain(Call& call) {
    return call.draft.state.domains[call.draft.domain];
}

}  // namespace

Refusal create_domain(Call& call) {
    const std::string& name = call.arguments[0];
    if (domain_name_is_taken(call.draft.state, name)) {
        return "this domain exists already";
    }
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
    if (domain_name_is_taken(call.draft.state, alias)) {
        return "this domain or domain alias exists already";
    }
    current_domain(call).aliases.push_back(alias);
    return nullptr;
}

Refusal add_account_alias(Call& call) {
    const std::string& alias = call.arguments[0];
    if (account_name_is_taken(current_domain(call), alias)) {
        return "this account or account alias exists already";
    }
    current_domain(call).accounts[call.draft.account].push_back(alias);
    return nullptr;
}

Refusal set_primary_domain(Call& call) {
    const std::string& name = call.arguments[0];
    if (call.draft.state.domains.count(name) == 0) {
        return "no such domain";
    }
    call.draft.state.primary_domain = name;
    return nullptr;
}

}  // namespace standin
