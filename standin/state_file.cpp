#include "state_file.h"

#include <array>

#include "text.h"

namespace standin {

namespace {

/// A line of the file, by its words; the last of them is the rest of the line.
using Words = std::vector<std::string>;

Service* find_service(State& state, const std::string& name) {
    const auto found = state.listener_services.find(name);
    return found == state.listener_services.end() ? nullptr : &found->second;
}

Domain* find_domain(State& state, const std::string& name) {
    const auto found = state.domains.find(name);
    return found == state.domains.end() ? nullptr : &found->second;
}

bool read_services(State& state, const Words& words) {
    state.services = split_words(words[1]);
    return true;
}

bool read_primary_domain(State& state, const Words& words) {
    state.primary_domain = words[1];
    return true;
}

bool read_listener(State& state, const Words& words) {
    Service* service = find_service(state, words[1]);
    if (service != nullptr) {
        service->listeners.push_back(words[2]);
    }
    return service != nullptr;
}

bool read_enable(State& state, const Words& words) {
    Service* service = find_service(state, words[1]);
    if (service != nullptr) {
        service->enabled = words[2] == "yes";
    }
    return service != nullptr;
}

bool read_certfile(State& state, const Words& words) {
    Service* service = find_service(state, words[1]);
    if (service != nullptr) {
        service->certfile = words[2];
    }
    return service != nullptr;
}

bool read_domain(State& state, const Words& words) {
    Domain domain;
    domain.location = words[2];
    domain.postmaster_password = words[3];
    return state.domains.emplace(words[1], domain).second;
}

bool read_domain_alias(State& state, const Words& words) {
    Domain* domain = find_domain(state, words[1]);
    if (domain != nullptr) {
        domain->aliases.push_back(words[2]);
    }
    return domain != nullptr;
}

bool read_account(State& state, const Words& words) {
    Domain* domain = find_domain(state, words[1]);
    return domain != nullptr && domain->accounts.emplace(words[2], Words()).second;
}

bool read_account_alias(State& state, const Words& words) {
    Domain* domain = find_domain(state, words[1]);
    if (domain == nullptr || domain->accounts.count(words[2]) == 0) {
        return false;
    }
    domain->accounts[words[2]].push_back(words[3]);
    return true;
}

struct Record {
    const char* keyword;
    std::size_t values;
    bool (*read)(State& state, const Words& words);
};

const std::array<Record, 9> records = {{
    {"services", 1, read_services},
    {"primarydomain", 1, read_primary_domain},
    {"listener", 2, read_listener},
    {"enable", 2, read_enable},
    {"certfile", 2, read_certfile},
    {"domain", 3, read_domain},
    {"domainalias", 2, read_domain_alias},
    {"account", 2, read_account},
    {"accountalias", 3, read_account_alias},
}};

bool read_record(State& state, const std::string& line) {
    Words words = split_words(line);
    for (const Record& record : records) {
        if (words[0] == record.keyword) {
            const std::string rest = rest_from_word(line, record.values);
            if (rest.empty()) {
                return false;
            }
            words.resize(record.values);
            words.push_back(rest);
            return record.read(state, words);
        }
    }
    return false;
}

void add_line(std::string& text, const Words& words) {
    if (!words.back().empty()) {
        text += joined(words) + "\n";
    }
}

void add_service(std::string& text, const std::string& name, const Service& service) {
    for (const std::string& listener : service.listeners) {
        add_line(text, {"listener", name, listener});
    }
    add_line(text, {"enable", name, service.enabled ? "yes" : ""});
    add_line(text, {"certfile", name, service.certfile});
}

void add_domain(std::string& text, const std::string& name, const Domain& domain) {
    add_line(text, {"domain", name, domain.location, domain.postmaster_password});
    for (const std::string& alias : domain.aliases) {
        add_line(text, {"domainalias", name, alias});
    }
    for (const auto& [account, aliases] : domain.accounts) {
        add_line(text, {"account", name, account});
        for (const std::string& alias : aliases) {
            add_line(text, {"accountalias", name, account, alias});
        }
    }
}

}  // namespace

std::string state_to_text(const State& state) {
    std::string text;
    add_line(text, {"services", joined(state.services)});
    add_line(text, {"primarydomain", state.primary_domain});
    for (const auto& [name, service] : state.listener_services) {
        add_service(text, name, service);
    }
    for (const auto& [name, domain] : state.domains) {
        add_domain(text, name, domain);
    }
    return text;
}

std::string state_from_text(const std::string& text, State& state) {
    state = empty_state();
    int number = 0;
    for (const std::string& line : split_lines(text)) {
        ++number;
        if (!trimmed(line).empty() && !read_record(state, line)) {
            return "line " + std::to_string(number) + " is no record: " + line;
        }
    }
    return {};
}

}  // namespace standin
