#include "apply/apply_sequence.h"

#include <curses.h>

#include <string>

#include "apply/cli_sequences.h"
#include "apply/cli_session.h"
#include "apply/progress_list.h"
#include "apply/relay_filter.h"
#include "apply/sendmail_install.h"
#include "apply/server_process.h"
#include "apply/server_session.h"
#include "ui/message_dialogs.h"
#include "wizard/base/host_facts.h"
#include "wizard/base/listeners.h"
#include "wizard/base/wizard_settings.h"
#include "wizard/system/resource_limits.h"
#include "wizard/system/secret.h"

namespace {

WizardSettings& settings = wizard_settings;

int restart_server() {
    // Without room for its files the restart would leave the server stopped, or a second one
    // running. A few at a time are enough.
    if (!can_open_files(16)) return 1;
    // A restart that has failed shows up as a login that fails.
    server_restart_with_password(settings.admin_password);
    return 0;
}

int create_domain() {
    return cli_create_domain(settings.primary_domain, settings.domain_location,
                             settings.postmaster_password);
}

bool wants_aliases() {
    return settings.alias_root_to_postmaster || settings.alias_localhost ||
           settings.alias_localhost_localdomain;
}

int add_aliases() {
    // Those that have failed, and are not wanted any more, leave nothing to do.
    if (!wants_aliases()) progress_done("alias");
    return cli_update_domain_aliases(settings.alias_root_to_postmaster, settings.alias_localhost,
                                     settings.alias_localhost_localdomain, settings.primary_domain);
}

int configure(const Listener& listener) {
    const char* const address = interface_table[settings.*listener.interface_index].address;
    const int port = settings.*listener.port;
    return listener.service == nullptr ? cli_config_webadmin(address, port)
                                       : cli_config_listener(address, port, listener.service);
}

int set_services() {
    const char* chosen[optional_service_count];
    for (int i = 0; i < optional_service_count; ++i)
        chosen[i] = settings.service_enabled[i] ? optional_listeners[i].service : nullptr;
    if (cli_set_services(chosen[service_pop3], chosen[service_imap], chosen[service_webmail]) != 0)
        return 1;
    for (int i = 0; i < optional_service_count; ++i) {
        const Listener& listener = optional_listeners[i];
        if (chosen[i] == nullptr) continue;
        progress_add(listener.key, listener.progress);
        if (configure(listener) != 0) return 1;
        progress_done(listener.key);
    }
    return 0;
}

bool select_relay_networks() {
    settings.relay_selected_count = 0;
    for (int i = 0; i < relay_network_count; ++i) {
        if (settings.relay_ticks[i]) settings.relay_selected[settings.relay_selected_count++] = i;
    }
    return settings.relay_selected_count > 0;
}

bool always() { return true; }

// What a step shows and does. In its texts "%s" stands for the domain.
struct Step {
    int WizardSettings::*done;  // null for done_aliases, the only one that is a byte
    bool (*is_wanted)();
    const char* key;   // of its line of progress
    const char* text;  // of that line; null: the step adds its lines by itself
    int (*run)();      // returns 0, or 1 when it has failed; is called also when it is not wanted
    int way_back;      // where it can be put right; state_end: nowhere, without the server
    const char* message;  // for the user, when it has failed
};

constexpr char login_failure[] =
    "Could not login to Teluma server! Please make sure that the CLI port is not in use!";

// In the order in which they are applied.
constexpr Step steps[] = {
    {&WizardSettings::done_password, always, "pass", "--> setting admin password", restart_server,
     state_end, login_failure},
    {&WizardSettings::done_login, always, "login", "--> connecting to CLI", cli_login, state_end,
     login_failure},
    {&WizardSettings::done_domain, always, "cd", "--> creating domain %s", create_domain,
     state_domain,
     "Could not create the domain '%s'! Please make sure this domain doesn't already exist!"},
    {nullptr, wants_aliases, "alias", "--> adding aliases", add_aliases, state_aliases,
     "Could not create the aliases! Please make sure that a similar alias does not already exist!"},
    {&WizardSettings::done_webadmin, always, webadmin_listener.key, webadmin_listener.progress,
     [] { return configure(webadmin_listener); }, state_webadmin, "Could not configure webadmin!"},
    {&WizardSettings::done_smtp, always, smtp_listener.key, smtp_listener.progress,
     [] { return configure(smtp_listener); }, state_smtp, "Could not configure SMTP!"},
    {&WizardSettings::done_services, always, "services", nullptr, set_services, state_services,
     "Could not set services!"},
    {&WizardSettings::done_relay, select_relay_networks, "relay", "--> configuring relay",
     [] { return relay_write_filter(settings.relay_selected, settings.relay_selected_count); },
     state_relay, "Could not configure relay!"},
    {&WizardSettings::done_sendmail, [] { return settings.sendmail_wrapper != 0; }, "sendmail",
     "--> configuring TELUMA sendmail", [] { return sendmail_install(settings.sendmail_wrapper); },
     state_sendmail, "Could not configure sendmail wrapper!"},
};

std::string with_domain(std::string text) {
    const size_t place = text.find("%s");
    return place == std::string::npos ? text : text.replace(place, 2, settings.primary_domain);
}

int apply_step(const Step& step) {
    if (step.done == nullptr ? settings.done_aliases : settings.*step.done) return 0;
    const bool wanted = step.is_wanted();
    if (wanted && step.text != nullptr) progress_add(step.key, with_domain(step.text).c_str());
    if (step.run() != 0) return 1;
    if (!wanted) return 0;
    progress_done(step.key);
    if (step.done == nullptr)
        settings.done_aliases = 1;
    else
        settings.*step.done = 1;
    return 0;
}

// Whoever goes through the screens again changes nothing about what has been applied.
void forget_applied_passwords() {
    if (settings.done_login) {
        wipe(settings.admin_password);
        wipe(install_profiles[os_kind].admin_password);
    }
    if (settings.done_domain) wipe(settings.postmaster_password);
}

void close_progress() {
    progress_hide_all();
    closePending();
}

WizardEnd fail(const Step& step) {
    close_progress();
    showMessage(with_domain(step.message).c_str(), "Error!");
    if (step.way_back == state_end) return WizardEnd::without_login;
    // The screen of the aliases comes back as it was left, on "Next". The one before it starts
    // afresh, for a user who goes on back: the domain exists by then and can't be changed.
    screen_focus(step.way_back == state_aliases ? state_domain : step.way_back) = 0;
    screen_state = step.way_back;
    return WizardEnd::not_yet;
}

}  // namespace

WizardEnd apply_configuration() {
    settings.apply_running = 1;
    showApplyPending("Please wait until the changes are applied!", "Operations pending");
    curs_set(1);
    progress_show_all();
    for (const Step& step : steps) {
        const int failure = apply_step(step);
        forget_applied_passwords();
        if (server_session.out_of_memory) return WizardEnd::out_of_memory;
        if (failure != 0) return fail(step);
    }
    progress_wait_for_ok();
    close_progress();
    server_stop();
    screen_state = state_end;
    return WizardEnd::completed;
}
