#include "tests/support/expected_wire.h"

#include <algorithm>
#include <functional>
#include <map>

namespace {

void append(Lines& lines, const Lines& more) {
    lines.insert(lines.end(), more.begin(), more.end());
}

Lines domain_step(const WireAnswers& answers) {
    return {"create domain name " + answers.domain + " domainlocation " + answers.location +
                " postmasterpasswd " + answers.postmaster_password,
            "commit",
            "config server",
            "set primarydomain " + answers.domain,
            "commit",
            "save config"};
}

Lines alias_step(const WireAnswers& answers) {
    const std::string update = "update domain name " + answers.domain;
    Lines lines = {update};
    if (answers.root_alias)
        append(lines, {"update account name postmaster", "add alias root", "commit"});
    if (answers.localdomain_alias) append(lines, {"add alias localhost.localdomain", "commit"});
    if (answers.localdomain_alias && answers.localhost_alias) lines.push_back(update);
    if (answers.localhost_alias)
        append(lines, {"add alias localhost", "commit"});
    else if (!answers.localdomain_alias)
        lines.emplace_back("commit");
    return answers.root_alias || answers.localdomain_alias || answers.localhost_alias ? lines
                                                                                      : Lines();
}

/// Sends the commands of the steps and takes the server's part.
class Conversation {
  public:
    explicit Conversation(const std::vector<Refusal>& planned) : plan(planned) {}

    bool webadmin_failed = false;

    Lines listenerStep(const std::string& service, const std::string& address) const {
        if (address.empty()) return {};
        Lines lines;
        if (service == "webadmin" && webadmin_failed) lines = {"back", "back"};
        append(lines, {"config server", "config " + service, "list listeners",
                       "remove listener address " + listening.at(service), "commit",
                       "config " + service, "add listener address " + address, "set enable yes"});
        if (service != "webadmin" && service != "webmail")
            append(lines,
                   {"config sslcontrol", "set certfile /var/opt/teluma/teluma_cert.pem", "done"});
        append(lines, {"commit", "commit", "save config", "back"});
        return lines;
    }

    Lines servicesStep(const WireAnswers& answers) const {
        std::string list = "smtpIncoming smtpOutgoing processing webadmin cli";
        Lines listeners;
        for (const auto& [service, address] :
             {std::pair("pop3", answers.pop3), std::pair("imap", answers.imap),
              std::pair("webmail", answers.webmail)}) {
            list += address.empty() ? "" : std::string(" ") + service;
            append(listeners, listenerStep(service, address));
        }
        Lines lines = {"config server", "show attr services", "set services ( " + list + " )",
                       "commit",        "config server",      "save config",
                       "commit"};
        append(lines, listeners);
        return lines;
    }

    // Whether the server has taken all of them. The ones it has got are added to `run`.
    bool send(const Lines& commands, Lines& run) {
        for (const std::string& command : commands) {
            run.push_back(command);
            const int count = ++counts[command];
            const auto refuses = [&](const Refusal& refusal) {
                return refusal.command == command && refusal.count == count;
            };
            if (std::any_of(plan.begin(), plan.end(), refuses)) return false;
            take(command);
        }
        return true;
    }

  private:
    // The second commit after it makes a new listener take effect.
    void take(const std::string& command) {
        const std::string adding = "add listener address ";
        if (command.rfind("config ", 0) == 0 && command != "config sslcontrol")
            entered = command.substr(7);
        if (command.rfind(adding, 0) == 0) {
            added = command.substr(adding.size());
            commits = 0;
        }
        if (command == "commit" && !added.empty() && ++commits == 2) {
            listening[entered] = added;
            added.clear();
        }
    }

    const std::vector<Refusal>& plan;
    std::map<std::string, int> counts;
    std::map<std::string, std::string> listening = {{"webadmin", "127.0.0.1:9000"},
                                                    {"smtp-incoming", "127.0.0.1:25"},
                                                    {"pop3", "127.0.0.1:110"},
                                                    {"imap", "127.0.0.1:143"},
                                                    {"webmail", "127.0.0.1:80"}};
    std::string entered;  // the service whose context it is in
    std::string added;    // a listener that waits for its commits
    int commits = 0;
};

}  // namespace

std::vector<Lines> expected_wire(const WireAnswers& answers, const std::vector<Refusal>& plan) {
    Conversation talk(plan);
    const std::vector<std::function<Lines()>> steps = {
        [&] {
            return Lines{"-A " + answers.password, "user admin", answers.password};
        },
        [&] { return domain_step(answers); },
        [&] { return alias_step(answers); },
        [&] { return talk.listenerStep("webadmin", answers.webadmin); },
        [&] { return talk.listenerStep("smtp-incoming", answers.smtp); },
        [&] { return talk.servicesStep(answers); },
        [&] {
            return answers.relay ? Lines{"config server", "show attr smtpfiltersfile", "back"}
                                 : Lines();
        }};
    std::vector<Lines> runs(1);
    for (size_t step = 0; step < steps.size();) {
        if (talk.send(steps[step](), runs.back())) {
            ++step;
            continue;
        }
        talk.webadmin_failed = talk.webadmin_failed || step == 3;
        runs.emplace_back();
    }
    return runs;
}

Lines joined(const std::vector<Lines>& runs) {
    Lines all;
    for (const Lines& run : runs) append(all, run);
    return all;
}
