#include "tests/e2e/apply_wire.h"

#include <algorithm>
#include <stdexcept>

Commands operator+(Commands left, const Commands& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

namespace {

/// What the server is told of one listener: which service it belongs to, the address that it has at
/// first, "A:P", and the one that it gets.
struct ListenerChange {
    std::string service;
    std::string before;
    std::string after;
};

std::string domain_of(const Answers& answers) {
    return answers.domain.empty() ? "localdomain" : answers.domain;
}

std::string location_of(const Answers& answers) {
    return answers.location.empty() ? "/var/opt/teluma/domains/" + domain_of(answers) + "/"
                                    : answers.location;
}

Commands replacing_commands(const ListenerChange& change) {
    return {"config server",
            "config " + change.service,
            "list listeners",
            "remove listener address " + change.before,
            "commit",
            "config " + change.service,
            "add listener address " + change.after,
            "set enable yes"};
}

Commands saving_commands() {
    return {"commit", "commit", "save config", "back"};
}

Commands certificate_commands() {
    return {"config sslcontrol", "set certfile /var/opt/teluma/teluma_cert.pem", "done"};
}

Commands mail_listener_commands(const ListenerChange& change) {
    return replacing_commands(change) + certificate_commands() + saving_commands();
}

bool any_network_wanted(const std::vector<bool>& relay) {
    constexpr size_t networks = 3;
    return relay.size() < networks || std::find(relay.begin(), relay.end(), true) != relay.end();
}

std::string address_of(const ListenerAnswer& answer, const std::string& default_port) {
    static const char* const addresses[] = {"0.0.0.0", "127.0.0.1", "192.168.7.2", "10.20.0.5"};
    return std::string(addresses[answer.row]) + ":" +
           (answer.port.empty() ? default_port : answer.port);
}

Commands login_commands(const std::string& password) {
    return {"user admin", password};
}

Commands domain_commands(const Answers& answers) {
    const std::string domain = domain_of(answers);
    return {"create domain name " + domain + " domainlocation " + location_of(answers) +
                " postmasterpasswd " + answers.postmaster_password,
            "commit",
            "config server",
            "set primarydomain " + domain,
            "commit",
            "save config"};
}

Commands alias_commands(const Answers& answers) {
    const bool root = answers.aliases[0];
    const bool localhost = answers.aliases[1];
    const bool localdomain = answers.aliases[2];
    if (!root && !localhost && !localdomain)
        return {};
    const Commands update = {"update domain name " + domain_of(answers)};
    const Commands add_localhost = {"add alias localhost", "commit"};
    const Commands add_localdomain = {"add alias localhost.localdomain", "commit"};
    Commands commands = update;
    if (root)
        commands =
            commands + Commands{"update account name postmaster", "add alias root", "commit"};
    if (localdomain && localhost)
        return commands + add_localdomain + update + add_localhost;
    if (localdomain)
        return commands + add_localdomain;
    if (localhost)
        return commands + add_localhost;
    return commands + Commands{"commit"};
}

Commands webadmin_commands(const ListenerAnswer& answer) {
    return replacing_commands({"webadmin", "127.0.0.1:9000", address_of(answer, "9000")}) +
           saving_commands();
}

Commands smtp_commands(const ListenerAnswer& answer) {
    return mail_listener_commands({"smtp-incoming", "127.0.0.1:25", address_of(answer, "25")});
}

Commands service_list_commands(const std::vector<bool>& services) {
    static const char* const names[] = {" pop3", " imap", " webmail"};
    std::string list = "smtpIncoming smtpOutgoing processing webadmin cli";
    for (size_t i = 0; i < services.size(); ++i)
        list += services[i] ? names[i] : "";
    return {"config server", "show attr services", "set services ( " + list + " )",
            "commit",        "config server",      "save config",
            "commit"};
}

Commands service_listener_commands(const Answers& answers) {
    Commands commands;
    if (answers.services[0])
        commands = commands + mail_listener_commands(
                                  {"pop3", "127.0.0.1:110", address_of(answers.pop3, "110")});
    if (answers.services[1])
        commands = commands + mail_listener_commands(
                                  {"imap", "127.0.0.1:143", address_of(answers.imap, "143")});
    if (answers.services[2])
        commands =
            commands +
            replacing_commands({"webmail", "127.0.0.1:80", address_of(answers.webmail, "80")}) +
            saving_commands();
    return commands;
}

Commands relay_commands() {
    return {"config server", "show attr smtpfiltersfile", "back"};
}

}  // namespace

Commands run_commands(const Answers& answers) {
    const Commands commands =
        Commands{"-A " + answers.password} + login_commands(answers.password) +
        domain_commands(answers) + alias_commands(answers) + webadmin_commands(answers.webadmin) +
        smtp_commands(answers.smtp) + service_list_commands(answers.services) +
        service_listener_commands(answers);
    return any_network_wanted(answers.relay) ? commands + relay_commands() : commands;
}

Commands with_new_listeners(Commands commands, const std::vector<std::string>& ports) {
    for (const std::string& port : ports) {
        const std::string before = "remove listener address 127.0.0.1:" + port;
        const std::string after = "remove listener address 0.0.0.0:" + port;
        std::replace(commands.begin(), commands.end(), before, after);
    }
    return commands;
}

size_t index_of(const Commands& commands, const std::string& command, int count) {
    for (size_t i = 0; i < commands.size(); ++i) {
        if (commands[i] == command && --count == 0)
            return i;
    }
    throw std::runtime_error("there are not so many commands " + command);
}

Commands part_of(const Commands& commands, size_t from, size_t end) {
    return {commands.begin() + static_cast<std::ptrdiff_t>(from),
            commands.begin() + static_cast<std::ptrdiff_t>(end)};
}
