#include "apply/apply_sequence.h"

#include <curses.h>

#include <cstdlib>
#include <string>

#include "apply/cli_sequences.h"
#include "apply/cli_session.h"
#include "apply/progress_list.h"
#include "apply/relay_filter.h"
#include "apply/sendmail_install.h"
#include "apply/server_process.h"
#include "ui/message_dialogs.h"
#include "ui/pending_box.h"
#include "ui/terminal/terminal.h"
#include "wizard/base/host_facts.h"
#include "wizard/base/install_profile.h"
#include "wizard/base/screen_state.h"
#include "wizard/base/wizard_settings.h"
#include "wizard/ending.h"
#include "wizard/system/resource_limits.h"
#include "wizard/system/secret.h"

namespace {

WizardSettings& settings = wizard_settings;

const char* address_of(int interface_index) {
    return interface_table[interface_index].address;
}

void show_failure(const char* message) {
    progress_hide_all();
    closePending();
    showMessage(message, "Error!");
}

// Sends the user back to the screen where the answer can be changed. Returns false, for the step
// that has failed.
bool go_back_to(int state, int focus_state, const char* message) {
    show_failure(message);
    screen_focus(focus_state) = 0;
    screen_state = state;
    return false;
}

bool go_back_to(int state, const char* message) {
    return go_back_to(state, state, message);
}

[[noreturn]] void end_without_login() {
    show_failure(
        "Could not login to Teluma server! Please make sure that the CLI port is not in use!");
    server_stop();
    release_screens();
    close_terminal();
    std::exit(1);
}

bool set_password() {
    if (settings.done_password)
        return true;
    progress_add("pass", "--> setting admin password");
    settings.done_password = 1;
    // Without room for its files the restart would leave the server stopped, or a second one
    // running. A few at a time are enough.
    if (!can_open_files(16))
        end_without_login();
    // A restart that has failed shows up as a login that fails.
    server_restart_with_password(settings.admin_password);
    progress_done("pass");
    return true;
}

bool log_in() {
    if (settings.done_login)
        return true;
    progress_add("login", "--> connecting to CLI");
    if (cli_login() != 0)
        end_without_login();
    settings.done_login = 1;
    progress_done("login");
    return true;
}

bool create_domain() {
    if (settings.done_domain)
        return true;
    const std::string domain = settings.primary_domain;
    progress_add("cd", ("--> creating domain " + domain).c_str());
    if (cli_create_domain(settings.primary_domain, settings.domain_location,
                          settings.postmaster_password) != 0)
        return go_back_to(state_domain, ("Could not create the domain '" + domain +
                                         "'! Please make sure this domain doesn't already exist!")
                                            .c_str());
    settings.done_domain = 1;
    progress_done("cd");
    return true;
}

bool add_aliases() {
    const bool wanted = settings.alias_root_to_postmaster || settings.alias_localhost ||
                        settings.alias_localhost_localdomain;
    if (!settings.done_aliases && wanted) {
        progress_add("alias", "--> adding aliases");
        if (cli_update_domain_aliases(settings.alias_root_to_postmaster, settings.alias_localhost,
                                      settings.alias_localhost_localdomain,
                                      settings.primary_domain) != 0)
            // It is the domain screen that starts afresh: behind a similar alias stands, as a rule,
            // a domain that has to be named differently.
            return go_back_to(state_aliases, state_domain,
                              "Could not create the aliases! Please make sure that a similar alias "
                              "does not already exist!");
        settings.done_aliases = 1;
    }
    // Aliases that failed, and are not wanted any more, leave nothing to do.
    progress_done("alias");
    return true;
}

bool configure_webadmin() {
    if (settings.done_webadmin)
        return true;
    progress_add("webadmin", "--> configuring WebAdmin");
    if (cli_config_webadmin(address_of(settings.webadmin_interface), settings.webadmin_port) != 0)
        return go_back_to(state_webadmin, "Could not configure webadmin!");
    progress_done("webadmin");
    settings.done_webadmin = 1;
    return true;
}

bool configure_smtp() {
    if (settings.done_smtp)
        return true;
    progress_add("smtp", "--> configuring SMTP");
    if (cli_config_listener(address_of(settings.smtp_interface), settings.smtp_port,
                            "smtp-incoming") != 0)
        return go_back_to(state_smtp, "Could not configure SMTP!");
    progress_done("smtp");
    settings.done_smtp = 1;
    return true;
}

// One of the services that the user may choose, as the server and the progress list name it.
struct ServiceListener {
    OptionalService service;
    const char* name;
    const char* progress;
    int WizardSettings::*interface_index;
    int WizardSettings::*port;
};

const ServiceListener service_listeners[optional_service_count] = {
    {service_pop3, "pop3", "--> configuring POP3", &WizardSettings::pop3_interface,
     &WizardSettings::pop3_port},
    {service_imap, "imap", "--> configuring IMAP", &WizardSettings::imap_interface,
     &WizardSettings::imap_port},
    {service_webmail, "webmail", "--> configuring WEBMAIL", &WizardSettings::webmail_interface,
     &WizardSettings::webmail_port},
};

const char* name_if_chosen(const ServiceListener& listener) {
    return settings.service_enabled[listener.service] ? listener.name : nullptr;
}

bool configure_service(const ServiceListener& listener) {
    progress_add(listener.name, listener.progress);
    if (cli_config_listener(address_of(settings.*listener.interface_index), settings.*listener.port,
                            listener.name) != 0)
        return false;
    progress_done(listener.name);
    return true;
}

bool configure_chosen_services() {
    if (cli_set_services(name_if_chosen(service_listeners[service_pop3]),
                         name_if_chosen(service_listeners[service_imap]),
                         name_if_chosen(service_listeners[service_webmail])) != 0)
        return false;
    for (const ServiceListener& listener : service_listeners) {
        if (settings.service_enabled[listener.service] && !configure_service(listener))
            return false;
    }
    return true;
}

bool set_services() {
    if (settings.done_services)
        return true;
    if (!configure_chosen_services())
        return go_back_to(state_services, "Could not set services!");
    settings.done_services = 1;
    return true;
}

void collect_relay_networks() {
    settings.relay_selected_count = 0;
    for (int i = 0; i < relay_network_count; ++i) {
        if (settings.relay_ticks[i])
            settings.relay_selected[settings.relay_selected_count++] = i;
    }
}

bool configure_relay() {
    if (settings.done_relay)
        return true;
    collect_relay_networks();
    const bool any = settings.relay_selected_count > 0;
    if (any)
        progress_add("relay", "--> configuring relay");
    if (relay_write_filter(settings.relay_selected, settings.relay_selected_count) != 0)
        return go_back_to(state_relay, "Could not configure relay!");
    if (any) {
        progress_done("relay");
        settings.done_relay = 1;
    }
    return true;
}

bool install_sendmail() {
    if (settings.done_sendmail || !settings.sendmail_wrapper)
        return true;
    progress_add("sendmail", "--> configuring TELUMA sendmail");
    if (sendmail_install(settings.sendmail_wrapper) != 0)
        return go_back_to(state_sendmail, "Could not configure sendmail wrapper!");
    progress_done("sendmail");
    settings.done_sendmail = 1;
    return true;
}

// Whoever goes through the screens again changes nothing about what has been applied.
void forget_applied_passwords() {
    if (settings.done_login) {
        wipe(settings.admin_password);
        wipe(install_profiles[os_kind].admin_password);
    }
    if (settings.done_domain)
        wipe(settings.postmaster_password);
}

void finish() {
    progress_wait_for_ok();
    progress_hide_all();
    closePending();
    server_stop();
    screen_state = state_end;
}

// The steps in the order in which they are applied; each returns false when it has failed and the
// user is to go back.
bool (*const steps[])() = {set_password,       log_in,         create_domain, add_aliases,
                           configure_webadmin, configure_smtp, set_services,  configure_relay,
                           install_sendmail};

}  // namespace

WizardEnd apply_configuration() {
    settings.apply_running = 1;
    showApplyPending("Please wait until the changes are applied!", "Operations pending");
    curs_set(1);
    progress_show_all();
    for (const auto step : steps) {
        const bool succeeded = step();
        forget_applied_passwords();
        if (!succeeded)
            return WizardEnd::not_yet;
    }
    finish();
    return WizardEnd::completed;
}
