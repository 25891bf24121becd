#include "actions.h"
#include "service_names.h"
#include "text.h"

namespace standin {

namespace {

const Refusal malformed = "malformed arguments";

/// The names of a text "( a b )"; none when it has another form or a name is no service's.
std::vector<std::string> listed_services(const std::string& text) {
    std::vector<std::string> words = split_words(text);
    if (words.size() < 3 || words.front() != "(" || words.back() != ")") {
        return {};
    }
    words.pop_back();
    words.erase(words.begin());
    for (const std::string& word : words) {
        if (!is_service(word)) {
            return {};
        }
    }
    return words;
}

}  // namespace

Refusal just_move(Call& /*call*/) {
    return nullptr;
}

Refusal open_login(Call& call) {
    call.draft.user = call.arguments[0];
    return nullptr;
}

Refusal save_config(Call& call) {
    return call.store.save() ? nullptr : "the state can't be saved";
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
    const std::vector<std::string> services = listed_services(call.arguments[0]);
    if (services.empty()) {
        return malformed;
    }
    call.draft.state.services = services;
    return nullptr;
}

Refusal open_service(Call& call) {
    call.draft.service = call.arguments[0];
    return is_listener_service(call.draft.service) ? nullptr : "no such service";
}

}  // namespace standin
