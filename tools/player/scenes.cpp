#include "tools/player/scenes.h"

#include "tools/player/other_programs.h"

namespace {

const std::vector<Stroke> to_ok = {Key::tab, Key::tab};

Scene listener(const std::string& service, const std::string& picture,
               const std::vector<Stroke>& answers, const std::vector<Stroke>& leaves) {
    return {service + " listener", picture, "Select " + service + " Interface", answers, leaves};
}

template <class Element>
void append(std::vector<Element>& list, const std::vector<Element>& more) {
    list.insert(list.end(), more.begin(), more.end());
}

// A password that is mistyped first.
std::vector<Scene> password_scenes() {
    const std::string title = "Please enter admin's password";
    return {
        {"Administrator password",
         "password",
         title,
         {"S3cret!", Key::tab, "S3cret", Key::tab},
         {Key::enter}},
        {"Passwords that differ", "error", "Error!", {}, {Key::enter}},
        {"Administrator password, again", "", title, {Key::tab, "!", Key::tab}, {Key::enter}},
    };
}

std::vector<Scene> domain_scenes() {
    std::vector<Stroke> domain(11, Key::backspace);
    append(domain, {"example.com", Key::tab, Key::tab, "postmaster's", Key::tab});
    return {
        {"Domain", "domain", "Domain configuration", domain, {Key::enter}},
        {"Aliases",
         "aliases",
         "Alias Configuration",
         {Key::down, Key::down, Key::tab},
         {Key::enter}},
    };
}

// A port that another program has, and then the one that stood there at first.
std::vector<Scene> webadmin_scenes() {
    std::vector<Stroke> take_other_port = {Key::tab, Key::tab, Key::tab};
    std::vector<Stroke> return_to_first(4, Key::backspace);
    append(take_other_port, return_to_first);
    append(take_other_port, {std::to_string(port_in_use), Key::tab, Key::enter});
    append(return_to_first, {"9000", Key::tab});
    return {
        listener("WebAdmin", "webadmin", to_ok, take_other_port),
        {"A port that is taken", "port_in_use", "Warning!", {Key::tab}, {Key::enter}},
        listener("WebAdmin", "", return_to_first, {Key::enter}),
    };
}

std::vector<Scene> service_scenes() {
    return {
        listener("SMTP", "smtp", to_ok, {Key::enter}),
        {"Services",
         "services",
         "Services Selection",
         {Key::down, Key::down, Key::tab},
         {Key::enter}},
        listener("POP3", "pop3", to_ok, {Key::enter}),
        {"A port that is being checked",
         "port_check",
         "Operation pending!",
         {},
         {EndOfBusyProgram{}}},
        listener("IMAP", "imap", {Key::down, Key::tab, Key::tab}, {Key::enter}),
        {"Loopback question", "loopback", "WARNING!", {Key::tab}, {Key::enter}},
        listener("WebMail", "webmail", to_ok, {Key::enter}),
    };
}

std::vector<Scene> last_scenes() {
    return {
        {"Relay networks",
         "relay",
         "Relay Configuration",
         {Key::down, Key::space, Key::tab},
         {Key::enter}},
        {"Sendmail wrapper", "sendmail", "Sendmail Wrapper Configuration", {}, {Key::enter}},
        {"Applying the answers", "apply", " OK ", {}, {Key::enter}},
    };
}

}  // namespace

std::vector<Scene> demonstration() {
    std::vector<Scene> scenes = password_scenes();
    append(scenes, domain_scenes());
    append(scenes, webadmin_scenes());
    append(scenes, service_scenes());
    append(scenes, last_scenes());
    return scenes;
}
