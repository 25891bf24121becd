#include "apply/cli_sequences.h"

#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <string>

#include "apply/cli_replies.h"
#include "apply/cli_session.h"
#include "wizard/base/heap_text.h"

namespace {

constexpr char list_listeners[] = "list listeners";
constexpr char certificate[] = "/var/opt/teluma/teluma_cert.pem";

// How often configuring WebAdmin has failed.
unsigned webadmin_failures = 0;

// The commands one after another, up to the first that fails.
int run(std::initializer_list<const char*> commands) {
    for (const char* command : commands) {
        if (cli_command(command) != 0)
            return 1;
    }
    return 0;
}

// In the server's context: the listeners of `service` are replaced by one, and it is enabled. Stays
// in the context of the service.
int replace_listeners(const char* service, const char* address, int port) {
    if (cli_command_format("config %s", service) != 0 || cli_reset_listeners(list_listeners) != 0 ||
        cli_command_format("config %s", service) != 0 ||
        cli_command_format("add listener address %s:%d", address, port) != 0)
        return 1;
    return cli_command("set enable yes");
}

int set_certificate() {
    if (cli_command("config sslcontrol") != 0 ||
        cli_command_format("set certfile %s", certificate) != 0)
        return 1;
    return cli_command("done");
}

bool speaks_tls(const char* service) {
    for (const char* mail_service : {"pop3", "imap", "smtp-incoming"}) {
        if (std::strcmp(service, mail_service) == 0)
            return true;
    }
    return false;
}

int commit_listeners() {
    return run({"commit", "commit", "save config", "back"});
}

int replace_webadmin_listeners(const char* address, int port) {
    if (cli_command("config server") != 0 || replace_listeners("webadmin", address, port) != 0)
        return 1;
    return commit_listeners();
}

}  // namespace

int cli_create_domain(const char* domain, const char* location, const char* postmaster_password) {
    if (cli_command_format("create domain name %s domainlocation %s postmasterpasswd %s", domain,
                           location, postmaster_password) != 0 ||
        run({"commit", "config server"}) != 0 ||
        cli_command_format("set primarydomain %s", domain) != 0)
        return 1;
    return run({"commit", "save config"});
}

int cli_config_webadmin(const char* address, int port) {
    if (webadmin_failures > 0 && run({"back", "back"}) != 0)
        return 1;
    if (replace_webadmin_listeners(address, port) == 0)
        return 0;
    ++webadmin_failures;
    return 1;
}

int cli_config_listener(const char* address, int port, const char* service) {
    if (cli_command("config server") != 0 || replace_listeners(service, address, port) != 0)
        return 1;
    if (speaks_tls(service) && set_certificate() != 0)
        return 1;
    return commit_listeners();
}

int cli_set_services(const char* first, const char* second, const char* third) {
    if (cli_command("config server") != 0)
        return 1;
    const HeapText base(cli_read_services("show attr services"));
    if (base == nullptr)
        return 1;
    std::string services = base.get();
    for (const char* service : {first, second, third}) {
        if (service != nullptr)
            services.append(" ").append(service);
    }
    if (cli_command_format("set services ( %s )", services.c_str()) != 0)
        return 1;
    return run({"commit", "config server", "save config", "commit"});
}

char* cli_get_filters_file() {
    if (cli_command("config server") != 0)
        return nullptr;
    HeapText path(cli_read_filters_file("show attr smtpfiltersfile"));
    if (path == nullptr || cli_command("back") != 0)
        return nullptr;
    return path.release();
}

int cli_update_domain_aliases(int root, int localhost, int localdomain, const char* domain) {
    if (root == 0 && localhost == 0 && localdomain == 0)
        return 0;
    if (cli_command_format("update domain name %s", domain) != 0)
        return 1;
    if (root == 1 && run({"update account name postmaster", "add alias root", "commit"}) != 0)
        return 1;
    if (localdomain == 1) {
        if (run({"add alias localhost.localdomain", "commit"}) != 0)
            return 1;
        if (localhost != 1)
            return 0;
        if (cli_command_format("update domain name %s", domain) != 0)
            return 1;
    }
    if (localhost == 1)
        return run({"add alias localhost", "commit"});
    return cli_command("commit");
}
