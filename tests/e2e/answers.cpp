#include "tests/e2e/answers.h"

#include <algorithm>

namespace {

// Empty for a service that was not chosen.
std::string address_of(const Answers& answers, Stop stop, bool is_chosen = true) {
    static const char* const addresses[] = {"0.0.0.0", "127.0.0.1", "192.168.7.2", "10.20.0.5"};
    const ListenerAnswer& answer = answers.listener(stop);
    const std::string port = answer.port.empty() ? facts_of(stop).port : answer.port;
    return is_chosen ? addresses[answer.row] + (":" + port) : "";
}

}  // namespace

const ListenerAnswer& Answers::listener(Stop stop) const {
    return stop == Stop::webadmin ? webadmin
           : stop == Stop::smtp   ? smtp
           : stop == Stop::pop3   ? pop3
           : stop == Stop::imap   ? imap
                                  : webmail;
}

WireAnswers wire_answers(const Answers& answers) {
    const std::vector<bool>& relay = answers.relay;
    const std::vector<bool>& services = answers.services;
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
            address_of(answers, Stop::pop3, services[0]),
            address_of(answers, Stop::imap, services[1]),
            address_of(answers, Stop::webmail, services[2]),
            relay.empty() || std::find(relay.begin(), relay.end(), true) != relay.end()};
}
