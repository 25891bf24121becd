#include "screens/screen_table.h"

#include "screens/screen.h"
#include "ui/keys.h"
#include "wizard/base/wizard_settings.h"

std::unique_ptr<Screen> built_screens[screen_count];

namespace {

// A move that depends on the services that are enabled, and none.
constexpr int by_services = -1;
constexpr int nowhere = -2;

void redraw(int state) {
    if (built_screens[state] != nullptr) built_screens[state]->redraw();
    // A screen that is not built yet forgets a key all the same, by the window of one that is.
    else if (built_screens[state_password] != nullptr)
        drain_key(built_screens[state_password]->getFrame().getCursesWindow(), false);
}

}  // namespace

const ScreenRow screen_table[screen_count] = {
    {state_password, "Please enter admin's password", password_screen_build, state_domain, nowhere},
    {state_domain, "Domain configuration", domain_screen_build, state_aliases, state_password},
    {state_aliases, "Alias Configuration", alias_screen_build, state_webadmin, state_domain,
     Hidden::goes},
    {state_webadmin, "Select WebAdmin Interface", listener_screen_build, state_smtp, state_aliases},
    {state_smtp, "Select SMTP Interface", listener_screen_build, by_services, by_services},
    {state_services, "Services Selection", services_screen_build, by_services, state_smtp,
     Hidden::stays_in_place},
    {state_pop3, "Select POP3 Interface", listener_screen_build, by_services, by_services},
    {state_imap, "Select IMAP Interface", listener_screen_build, by_services, by_services},
    {state_webmail, "Select WebMail Interface", listener_screen_build, by_services, by_services},
    {state_relay, "Relay Configuration", relay_screen_build, state_sendmail, by_services,
     Hidden::stays_in_place},
    {state_sendmail, "Sendmail Wrapper Configuration", sendmail_screen_build, nowhere, state_relay,
     Hidden::stays_in_place},
};

Screen& built_screen(int state) {
    if (built_screens[state] == nullptr) {
        built_screens[state] = screen_table[state].create(state);
        built_screens[state]->hide();
    }
    return *built_screens[state];
}

WizardEnd ScreenRow::operator()() const {
    Screen& screen = built_screen(state);
    screen.draw();
    const WizardEnd end = screen.run();
    screen.hide();
    if (hidden == Hidden::goes) built_screens[state].reset();
    return end;
}

WizardEnd run_screens() {
    WizardEnd end = WizardEnd::not_yet;
    while (screen_state != state_end && end == WizardEnd::not_yet)
        end = screen_table[screen_state]();
    return end;
}

int next_screen_state(int state) {
    const int next = screen_table[state].next;
    return next == by_services ? next_listener_state(state) : next;
}

int previous_screen_state(int state) {
    const int back = screen_table[state].back;
    return back == by_services ? previous_listener_state(state) : back;
}

int next_listener_state(int state) {
    if (state == state_smtp) return state_services;
    int service = state - state_services;
    while (service < optional_service_count && !wizard_settings.service_enabled[service]) ++service;
    return service + state_pop3;
}

int previous_listener_state(int state) {
    if (state == state_smtp) return state_webadmin;
    int service = state - state_imap;
    while (service >= 0 && !wizard_settings.service_enabled[service]) --service;
    return service + state_pop3;
}

void redraw_screens() {
    if (screen_state < screen_count && screen_table[screen_state].hidden != Hidden::stays_in_place)
        redraw(screen_state);
    for (const ScreenRow& row : screen_table) {
        if (row.hidden == Hidden::stays_in_place) redraw(row.state);
    }
}

void destroy_screens() {
    for (std::unique_ptr<Screen>& screen : built_screens) screen.reset();
}
