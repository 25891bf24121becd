#include "tests/apply/step_commands.h"

namespace {

Lines replacement(const std::string& service, const std::string& old_address,
                  const std::string& new_address) {
    return {"config server",
            "config " + service,
            "list listeners",
            "remove listener address " + old_address,
            "commit",
            "config " + service,
            "add listener address " + new_address,
            "set enable yes"};
}

Lines ending() {
    return {"commit", "commit", "save config", "back"};
}

}  // namespace

Lines login_commands() {
    return {"-A Adm1n secret", "user admin", "Adm1n secret"};
}

Lines domain_commands() {
    const std::string creation =
        "create domain name example.com domainlocation /var/opt/teluma/domains/example.com/ "
        "postmasterpasswd P0stmaster";
    return {creation, "commit",     "config server", "set primarydomain example.com",
            "commit", "save config"};
}

Lines alias_commands() {
    return {"update domain name example.com",
            "update account name postmaster",
            "add alias root",
            "commit",
            "add alias localhost.localdomain",
            "commit",
            "update domain name example.com",
            "add alias localhost",
            "commit"};
}

Lines webadmin_commands(const std::string& old_address) {
    return joined_commands({replacement("webadmin", old_address, "0.0.0.0:9000"), ending()});
}

Lines listener_commands(const std::string& service, const std::string& old_address,
                        const std::string& new_address) {
    const Lines certificate = {"config sslcontrol", "set certfile /var/opt/teluma/teluma_cert.pem",
                               "done"};
    return joined_commands({replacement(service, old_address, new_address),
                            service == "webmail" ? Lines() : certificate, ending()});
}

Lines services_commands(const std::string& enabled) {
    return {"config server",
            "show attr services",
            "set services ( smtpIncoming smtpOutgoing processing webadmin cli" + enabled + " )",
            "commit",
            "config server",
            "save config",
            "commit"};
}

Lines relay_commands() {
    return {"config server", "show attr smtpfiltersfile", "back"};
}

Lines joined_commands(const std::vector<Lines>& steps) {
    Lines all;
    for (const Lines& step : steps)
        all.insert(all.end(), step.begin(), step.end());
    return all;
}
