#include "store.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "text.h"

namespace {

const mode_t owner_only = S_IRUSR | S_IWUSR;

/// A line of the file, by its words; the last of them is the rest of the line.
using Words = std::vector<std::string>;

struct Record {
    const char* keyword;
    std::size_t values;
    bool (*read)(State& state, const Words& words);  ///< false when what it belongs to is missing
};

/// Calls `change` with the entry of `table` that is named so; false when there is none.
template <class Table, class Change>
bool with(Table& table, const std::string& name, Change change) {
    const auto found = table.find(name);
    if (found != table.end()) change(found->second);
    return found != table.end();
}

const Record records[] = {
    {"services", 1,
     [](State& state, const Words& words) {
         state.services = split_words(words[1]);
         return true;
     }},
    {"primarydomain", 1,
     [](State& state, const Words& words) {
         state.primary_domain = words[1];
         return true;
     }},
    {"listener", 2,
     [](State& state, const Words& words) {
         return with(state.listener_services, words[1],
                     [&](Service& service) { service.listeners.push_back(words[2]); });
     }},
    {"enable", 2,
     [](State& state, const Words& words) {
         return with(state.listener_services, words[1],
                     [&](Service& service) { service.enabled = words[2] == "yes"; });
     }},
    {"certfile", 2,
     [](State& state, const Words& words) {
         return with(state.listener_services, words[1],
                     [&](Service& service) { service.certfile = words[2]; });
     }},
    {"domain", 3,
     [](State& state, const Words& words) {
         return state.domains.emplace(words[1], Domain{words[2], words[3], {}, {}}).second;
     }},
    {"domainalias", 2,
     [](State& state, const Words& words) {
         return with(state.domains, words[1],
                     [&](Domain& domain) { domain.aliases.push_back(words[2]); });
     }},
    {"account", 2,
     [](State& state, const Words& words) {
         bool is_new = false;
         with(state.domains, words[1],
              [&](Domain& domain) { is_new = domain.accounts.emplace(words[2], Words()).second; });
         return is_new;
     }},
    {"accountalias", 3,
     [](State& state, const Words& words) {
         return with(state.domains[words[1]].accounts, words[2],
                     [&](Words& aliases) { aliases.push_back(words[3]); });
     }},
};

bool read_record(State& state, const std::string& line) {
    Words words = split_words(line);
    for (const Record& record : records) {
        const std::string rest = rest_from_word(line, record.values);
        if (words[0] == record.keyword && !rest.empty()) {
            words.resize(record.values);
            words.push_back(rest);
            return record.read(state, words);
        }
    }
    return false;
}

/// Adds a line, unless its value is not set.
void add_line(std::string& text, const Words& words) {
    if (!words.back().empty()) text += joined(words) + "\n";
}

void add_service(std::string& text, const std::string& name, const Service& service) {
    for (const std::string& listener : service.listeners)
        add_line(text, {"listener", name, listener});
    add_line(text, {"enable", name, service.enabled ? "yes" : ""});
    add_line(text, {"certfile", name, service.certfile});
}

void add_domain(std::string& text, const std::string& name, const Domain& domain) {
    add_line(text, {"domain", name, domain.location, domain.postmaster_password});
    for (const std::string& alias : domain.aliases) add_line(text, {"domainalias", name, alias});
    for (const auto& [account, aliases] : domain.accounts) {
        add_line(text, {"account", name, account});
        for (const std::string& alias : aliases)
            add_line(text, {"accountalias", name, account, alias});
    }
}

}  // namespace

std::string state_to_text(const State& state) {
    std::string text;
    add_line(text, {"services", joined(state.services)});
    add_line(text, {"primarydomain", state.primary_domain});
    for (const auto& [name, service] : state.listener_services) add_service(text, name, service);
    for (const auto& [name, domain] : state.domains) add_domain(text, name, domain);
    return text;
}

std::string state_from_text(const std::string& text, State& state) {
    state = empty_state();
    int number = 0;
    for (const std::string& line : lines_of(text)) {
        ++number;
        if (!trimmed(line).empty() && !read_record(state, line))
            return "line " + std::to_string(number) + " is no record: " + line;
    }
    return {};
}

Store::Store(RunPaths paths)
    : live(empty_state()), smtp_filters(paths.smtp_filters), paths(std::move(paths)) {}

std::string Store::load(const State& first) {
    std::string text;
    if (read_all(paths.state, text)) {
        const std::string problem = state_from_text(text, live);
        return problem.empty() ? problem : paths.state + ": " + problem;
    }
    const int reason = errno;
    live = first;
    return reason == ENOENT ? "" : paths.state + ": " + std::strerror(reason);
}

bool Store::save() const { return replace_file(paths.state, state_to_text(live), owner_only); }

bool Store::setPassword(const std::string& password) const {
    return replace_file(paths.password, password, owner_only);
}

bool Store::isPassword(const std::string& text) const {
    std::string password;
    return read_all(paths.password, password) && text == password;
}
