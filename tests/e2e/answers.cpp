#include "tests/e2e/answers.h"

#include <algorithm>

namespace {

std::string address_of(const ListenerAnswer& answer, const std::string& default_port) {
    static const char* const addresses[] = {"0.0.0.0", "127.0.0.1", "192.168.7.2", "10.20.0.5"};
    return addresses[answer.row] + (":" + (answer.port.empty() ? default_port : answer.port));
}

}  // namespace

WireAnswers wire_answers(const Answers& answers) {
    const auto service = [&](size_t index, const ListenerAnswer& answer, const char* port) {
        return answers.services[index] ? address_of(answer, port) : "";
    };
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
            address_of(answers.webadmin, "9000"),
            address_of(answers.smtp, "25"),
            service(0, answers.pop3, "110"),
            service(1, answers.imap, "143"),
            service(2, answers.webmail, "80"),
            relay.empty() || std::find(relay.begin(), relay.end(), true) != relay.end()};
}
