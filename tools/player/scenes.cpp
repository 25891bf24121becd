#include "tools/player/scenes.h"

namespace {

Scene listener(const std::string& service, const std::vector<Stroke>& answers) {
    return {service + " listener", "Select " + service + " Interface", answers, {Key::enter}};
}

}  // namespace

std::vector<Scene> demonstration() {
    const std::vector<Stroke> to_ok = {Key::tab, Key::tab};
    const std::vector<Stroke> erase_default_domain(11, Key::backspace);
    std::vector<Stroke> domain = erase_default_domain;
    domain.insert(domain.end(), {"example.com", Key::tab, Key::tab, "postmaster's", Key::tab});
    return {
        {"Administrator password",
         "Please enter admin's password",
         {"S3cret!", Key::tab, "S3cret!", Key::tab},
         {Key::enter}},
        {"Domain", "Domain configuration", domain, {Key::enter}},
        {"Aliases", "Alias Configuration", {Key::down, Key::down, Key::tab}, {Key::enter}},
        listener("WebAdmin", to_ok),
        listener("SMTP", to_ok),
        {"Services",
         "Services Selection",
         {Key::down, Key::down, Key::space, Key::tab},
         {Key::enter}},
        listener("POP3", to_ok),
        listener("IMAP", {Key::down, Key::tab, Key::tab}),
        {"Loopback question", "WARNING!", {Key::tab}, {Key::enter}},
        {"Relay networks", "Relay Configuration", {Key::down, Key::space, Key::tab}, {Key::enter}},
        {"Sendmail wrapper", "Sendmail Wrapper Configuration", {}, {Key::enter}},
        {"Applying the answers", " OK ", {}, {Key::enter}},
    };
}
