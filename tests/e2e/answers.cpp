#include "tests/e2e/answers.h"

#include <algorithm>

namespace {

// Empty where the screen is not visited.
std::string address_of(const Answers& answers, Stop stop) {
    static const char* const addresses[] = {"0.0.0.0", "127.0.0.1", "192.168.7.2", "10.20.0.5"};
    const ListenerAnswer answer = answers.listener(stop);
    const std::string port = answer.port.empty() ? facts_of(stop).port : answer.port;
    return answers.visit(stop) ? addresses[answer.row] + (":" + port) : "";
}

}  // namespace

bool Answers::visit(Stop stop) const {
    const bool is_service = stop == Stop::pop3 || stop == Stop::imap || stop == Stop::webmail;
    return !is_service || services[static_cast<size_t>(place_of(stop) - place_of(Stop::pop3))];
}

ListenerAnswer Answers::listener(Stop stop) const {
    const auto found = listeners.find(stop);
    return found == listeners.end() ? ListenerAnswer() : found->second;
}

WireAnswers wire_answers(const Answers& answers) {
    const std::vector<bool>& relay = answers.relay;
    const std::string domain = answers.domain.empty() ? "localdomain" : answers.domain;
    const std::string location =
        answers.location.empty() ? "/var/opt/teluma/domains/" + domain + "/" : answers.location;
    return {answers.password,
            domain,
            location,
            answers.postmaster_password,
            answers.aliases[0],
            answers.aliases[1],
            answers.aliases[2],
            address_of(answers, Stop::webadmin),
            address_of(answers, Stop::smtp),
            address_of(answers, Stop::pop3),
            address_of(answers, Stop::imap),
            address_of(answers, Stop::webmail),
            relay.empty() || std::find(relay.begin(), relay.end(), true) != relay.end()};
}
