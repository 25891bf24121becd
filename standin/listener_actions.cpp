#include <algorithm>

#include "actions.h"
#include "address.h"

namespace standin {

namespace {

Service& current_service(Call& call) {
    return call.draft.state.listener_services[call.draft.service];
}

/// `text` with blanks up to the width of the longest address.
std::string address_cell(std::string text) {
    const std::size_t longest = std::string("255.255.255.255:65535").size();
    text.resize(std::max(text.size(), longest), ' ');
    return text;
}

}  // namespace

Refusal list_listeners(Call& call) {
    const Service& service = current_service(call);
    const std::string first_column = address_cell("");
    call.lines.push_back(address_cell("Address") + " | Enabled");
    call.lines.push_back(std::string(first_column.size(), '-') + "-+--------");
    for (const std::string& listener : service.listeners) {
        call.lines.push_back(address_cell(listener) + " | " + (service.enabled ? "yes" : "no"));
    }
    return nullptr;
}

Refusal add_listener(Call& call) {
    const std::string& address = call.arguments[0];
    if (!is_listener_address(address)) {
        return "malformed arguments";
    }
    if (listener_is_taken(call.draft.state, address) || address_is_in_use(address)) {
        return "this address is in use";
    }
    current_service(call).listeners.push_back(address);
    return nullptr;
}

Refusal remove_listener(Call& call) {
    std::vector<std::string>& listeners = current_service(call).listeners;
    const auto found = std::find(listeners.begin(), listeners.end(), call.arguments[0]);
    if (found == listeners.end()) {
        return "no such listener";
    }
    listeners.erase(found);
    return nullptr;
}

Refusal set_enable(Call& call) {
    const std::string& choice = call.arguments[0];
    if (choice != "yes" && choice != "no") {
        return "malformed arguments";
    }
    current_service(call).enabled = choice == "yes";
    return nullptr;
}

Refusal set_certfile(Call& call) {
    current_service(call).certfile = call.arguments[0];
    return nullptr;
}

}  // namespace standin
