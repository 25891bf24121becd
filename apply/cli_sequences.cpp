#include "apply/cli_sequences.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

#include "apply/cli_session.h"
#include "apply/server_session.h"
#include "wizard/base/heap_text.h"
#include "wizard/system/secret.h"

namespace {

using Commands = std::vector<std::string>;

// The commands one after another, up to the first that fails.
int run(const Commands& commands) {
    for (const std::string& command : commands) {
        if (cli_command(command.c_str()) != 0) return 1;
    }
    return 0;
}

std::string first_word(const std::string& text) {
    const size_t from = std::min(text.find_first_not_of(' '), text.size());
    return text.substr(from, text.find(' ', from) - from);
}

// Asks for an attribute and stores what the reply shows of it between `brackets`: nothing where it
// isn't named; an empty text where it is named only, which takes back nothing shown before.
Reply ask_for(std::optional<std::string>& value, const char* command, const char* name,
              const char* brackets) {
    const auto take = [&](const std::string& line) {
        const size_t open = line.find(brackets[0]);
        const size_t close = line.find(brackets[1], open + 1);
        if (holds(line, name))
            value = open == std::string::npos ? value.value_or("")
                                              : line.substr(open + 1, close - open - 1);
        return false;
    };
    return cli_ask(command, take, ">", "OK:");
}

char* reply_text(const std::string& text) {
    constexpr size_t size = 512;
    auto* copy = static_cast<char*>(std::calloc(size, 1));
    std::snprintf(copy, size, "%s", text.c_str());
    return copy;
}

}  // namespace

int cli_create_domain(const char* domain, const char* location, const char* postmaster_password) {
    char creation[1280];
    std::snprintf(creation, sizeof(creation),
                  "create domain name %s domainlocation %s postmasterpasswd %s", domain, location,
                  postmaster_password);
    const int failure = cli_command(creation);
    wipe(creation);
    if (failure != 0) return 1;
    return run({"commit", "config server", "set primarydomain " + std::string(domain), "commit",
                "save config"});
}

int cli_config_webadmin(const char* address, int port) {
    if (server_session.webadmin_failures > 0 && run({"back", "back"}) != 0) return 1;
    const int failure = cli_config_listener(address, port, "webadmin");
    if (failure != 0) ++server_session.webadmin_failures;
    return failure;
}

int cli_config_listener(const char* address, int port, const char* service) {
    const std::string name = service;
    const std::string enter = "config " + name;
    const std::string add = "add listener address " + std::string(address) + ":";
    if (run({"config server", enter}) != 0 || cli_reset_listeners("list listeners") != 0 ||
        run({enter, add + std::to_string(port), "set enable yes"}) != 0)
        return 1;
    const Commands certificate = {"config sslcontrol",
                                  "set certfile /var/opt/teluma/teluma_cert.pem", "done"};
    const bool speaks_tls = name == "pop3" || name == "imap" || name == "smtp-incoming";
    if (speaks_tls && run(certificate) != 0) return 1;
    return run({"commit", "commit", "save config", "back"});
}

int cli_set_services(const char* first, const char* second, const char* third) {
    if (cli_command("config server") != 0) return 1;
    const HeapText base(cli_read_services("show attr services"));
    if (base == nullptr) return 1;
    std::string services = base.get();
    for (const char* service : {first, second, third}) {
        if (service != nullptr) services.append(" ").append(service);
    }
    return run(
        {"set services ( " + services + " )", "commit", "config server", "save config", "commit"});
}

char* cli_get_filters_file() {
    if (cli_command("config server") != 0) return nullptr;
    HeapText path(cli_read_filters_file("show attr smtpfiltersfile"));
    return path != nullptr && cli_command("back") == 0 ? path.release() : nullptr;
}

int cli_update_domain_aliases(int root, int localhost, int localdomain, const char* domain) {
    if (root == 0 && localhost == 0 && localdomain == 0) return 0;
    const std::string update = "update domain name " + std::string(domain);
    Commands commands = {update};
    const auto add = [&](std::initializer_list<std::string> more) {
        commands.insert(commands.end(), more);
    };
    if (root == 1) add({"update account name postmaster", "add alias root", "commit"});
    if (localdomain == 1) add({"add alias localhost.localdomain", "commit"});
    if (localdomain == 1 && localhost == 1) add({update});
    if (localhost == 1) add({"add alias localhost", "commit"});
    if (localdomain != 1 && localhost != 1) add({"commit"});
    return run(commands);
}

int cli_reset_listeners(const char* list_command) {
    constexpr size_t most_listeners = 10;
    Commands commands;
    bool in_table = false;
    const Reply list = cli_ask(list_command, [&](const std::string& line) {
        const bool is_row = in_table && holds(line, "|");
        if (is_row && commands.size() < most_listeners)
            commands.push_back("remove listener address " + first_word(line));
        in_table = is_row || holds(line, "-----");
        return is_row;
    });
    commands.emplace_back("commit");
    return list != Reply::none && run(commands) == 0 && list == Reply::accepted ? 0 : 1;
}

char* cli_read_services(const char* command) {
    std::optional<std::string> services;
    // To set an empty list would switch off the command-line interface itself.
    if (ask_for(services, command, "services", "()") != Reply::accepted || !services)
        return nullptr;
    const std::string log = holds(*services, "log") ? "log " : "";
    return reply_text(log + "smtpIncoming smtpOutgoing processing webadmin cli");
}

char* cli_read_filters_file(const char* command) {
    std::optional<std::string> file;
    if (ask_for(file, command, "smtpFiltersFile", "\"\"") == Reply::none) return nullptr;
    std::string path = file.value_or("");
    path.erase(std::remove(path.begin(), path.end(), ' '), path.end());
    return reply_text(path);
}
