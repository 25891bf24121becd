#include "fault_rules.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>

#include "text.h"

namespace {

const unsigned replies = static_cast<unsigned>(Event::command) |
                         static_cast<unsigned>(Event::password) |
                         static_cast<unsigned>(Event::connect);
const unsigned at_start = static_cast<unsigned>(Event::start);
const unsigned at_stop = static_cast<unsigned>(Event::stop);

enum class Unit { none, seconds, bytes };

/// The amount of an action that can't do without one given.
const double must_be_given = -2;

struct ActionForm {
    const char* name;
    FaultKind kind;
    unsigned events;
    Unit unit;
    double usual_amount;
};

const std::array<ActionForm, 11> action_forms = {{
    {"refuse", FaultKind::refuse, replies | at_start, Unit::none, 0},
    {"close", FaultKind::close, replies, Unit::none, 0},
    {"silent", FaultKind::silent, replies, Unit::none, 0},
    {"late", FaultKind::late, replies | at_start, Unit::seconds, must_be_given},
    {"dribble", FaultKind::dribble, replies, Unit::seconds, 0.001},
    {"overlong", FaultKind::overlong, replies, Unit::bytes, 300},
    {"garbage", FaultKind::garbage, replies, Unit::bytes, 300},
    {"garbage-prompt", FaultKind::garbage_prompt, replies, Unit::bytes, 100},
    {"crash", FaultKind::crash, replies, Unit::none, 0},
    {"missing", FaultKind::missing, at_start, Unit::none, 0},
    {"stays", FaultKind::stays, at_stop, Unit::seconds, stays_for_ever},
}};

struct EventName {
    const char* name;
    Event event;
};

const std::array<EventName, 4> event_names = {{
    {"connect", Event::connect},
    {"password", Event::password},
    {"start", Event::start},
    {"stop", Event::stop},
}};

bool parse_seconds(const std::string& text, double& seconds) {
    const double most = 3600;
    if (text.empty() || text.find_first_not_of("0123456789.") != std::string::npos) return false;
    char* end = nullptr;
    seconds = std::strtod(text.c_str(), &end);
    return *end == '\0' && seconds <= most;
}

bool parse_bytes(const std::string& text, double& bytes) {
    const long most = 100'000'000;
    long number = 0;
    const bool good = parse_whole(text, 1, most, number);
    bytes = static_cast<double>(number);
    return good;
}

bool parse_amount(const ActionForm& form, const std::vector<std::string>& words, double& amount) {
    amount = form.usual_amount;
    if (words.size() == 1) return amount != must_be_given;
    if (words.size() != 2) return false;
    return (form.unit == Unit::seconds && parse_seconds(words[1], amount)) ||
           (form.unit == Unit::bytes && parse_bytes(words[1], amount));
}

/// `words` are the action's name and its amount, if any.
bool parse_fault(const std::vector<std::string>& words, Event event, Fault& fault) {
    const auto* form =
        std::find_if(action_forms.begin(), action_forms.end(),
                     [&](const ActionForm& candidate) { return words[0] == candidate.name; });
    if (form == action_forms.end() || (form->events & static_cast<unsigned>(event)) == 0)
        return false;
    fault.kind = form->kind;
    return parse_amount(*form, words, fault.amount);
}

bool parse_occurrence(const std::string& word, long& occurrence) {
    occurrence = 0;
    return word == "*" || parse_whole(word, 1, std::numeric_limits<int>::max(), occurrence);
}

/// Takes what the rule is about off the front of `rest`.
bool take_event(std::string& rest, FaultRule& rule) {
    rule.exactly = begins_with(rest, "=\"");
    const std::size_t open = rule.exactly ? 1 : 0;
    if (rest[open] == '"') {
        const std::size_t close = rest.rfind('"');
        rule.text = rest.substr(open + 1, close - open - 1);
        rest.erase(0, close + 1);
        return close > open;
    }
    const std::string word = split_words(rest)[0];
    rest = rest_from_word(rest, 1);
    for (const EventName& candidate : event_names) {
        if (word == candidate.name) {
            rule.event = candidate.event;
            return true;
        }
    }
    return false;
}

bool parse_rule(FaultRule& rule) {
    std::string rest = rule.source;
    if (!take_event(rest, rule)) return false;
    std::vector<std::string> words = split_words(rest);
    if (words.size() < 2 || !parse_occurrence(words[0], rule.occurrence)) return false;
    words.erase(words.begin());
    return parse_fault(words, rule.event, rule.fault);
}

bool stands_there(const std::vector<FaultRule>& rules, const std::string& source) {
    return std::any_of(rules.begin(), rules.end(),
                       [&](const FaultRule& rule) { return rule.source == source; });
}

}  // namespace

std::string parse_fault_rules(const std::string& text, std::vector<FaultRule>& rules) {
    int number = 0;
    for (const std::string& line : lines_of(text)) {
        ++number;
        FaultRule rule;
        rule.source = trimmed(line);
        if (rule.source.empty() || rule.source[0] == '#') continue;
        if (stands_there(rules, rule.source) || !parse_rule(rule))
            return "line " + std::to_string(number) + " is no fault rule: " + rule.source;
        rules.push_back(rule);
    }
    return {};
}

bool is_about(const FaultRule& rule, Event event, const std::string& command) {
    if (rule.event != event) return false;
    if (event != Event::command) return true;
    return rule.exactly ? command == rule.text : begins_with(command, rule.text);
}
