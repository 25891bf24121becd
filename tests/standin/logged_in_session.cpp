#include "tests/standin/logged_in_session.h"

#include "standin/config_file.h"

namespace {

const char* const configuration = R"(
services = ( smtpIncoming smtpOutgoing processing webadmin )
smtpIncoming = {
    enable = yes
    listeners = (
        address = 127.0.0.1:25
    )
}
webadmin = {
    listeners = (
        address = 127.0.0.1:9000
        address = 127.0.0.2:9000
    )
}
)";

}  // namespace

LoggedInSession::LoggedInSession() : store(standin::run_paths(directory.path())), session(store) {
    store.load(standin::parse_config(configuration).state);
    store.live.domains["example.com"] = standin::new_domain("/var/domains/example.com/", "secret");
    store.setPassword("pass word");
    say({"user admin", "pass word"});
}

std::string LoggedInSession::say(const std::vector<std::string>& lines) {
    std::string reply;
    for (const std::string& line : lines) {
        reply = session.answer(line);
    }
    return reply;
}

std::string LoggedInSession::refused(const std::vector<std::string>& lines) {
    for (const std::string& line : lines) {
        const std::string reply = session.answer(line);
        if (reply.find("+OK:") == std::string::npos) {
            return std::string(line).append(": ").append(reply);
        }
    }
    return {};
}
