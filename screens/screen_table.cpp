#include "screens/screen_table.h"

#include "screens/screen.h"
#include "ui/keys.h"
#include "wizard/base/wizard_settings.h"

std::unique_ptr<Screen> built_screens[screen_count];

const ScreenRow screen_table[screen_count] = {
    {state_password, "Please enter admin's password", password_screen_build},
    {state_domain, "Domain configuration", domain_screen_build},
    {state_aliases, "Alias Configuration", alias_screen_build, Hidden::goes},
    {state_webadmin, "Select WebAdmin Interface", listener_screen_build},
    {state_smtp, "Select SMTP Interface", listener_screen_build},
    {state_services, "Services Selection", services_screen_build, Hidden::stays_in_place},
    {state_pop3, "Select POP3 Interface", listener_screen_build},
    {state_imap, "Select IMAP Interface", listener_screen_build},
    {state_webmail, "Select WebMail Interface", listener_screen_build},
    {state_relay, "Relay Configuration", relay_screen_build, Hidden::stays_in_place},
    {state_sendmail, "Sendmail Wrapper Configuration", sendmail_screen_build,
     Hidden::stays_in_place},
};

WizardEnd ScreenRow::operator()() const {
    std::unique_ptr<Screen>& screen = built_screens[state];
    if (screen == nullptr) screen = build(state);
    screen->draw();
    const WizardEnd end = screen->run();
    screen->hide();
    if (hidden == Hidden::goes) screen.reset();
    return end;
}

WizardEnd run_screens() {
    WizardEnd end = WizardEnd::not_yet;
    while (screen_state != state_end && end == WizardEnd::not_yet)
        end = screen_table[screen_state]();
    return end;
}

namespace {

bool is_enabled(int state) {
    return state < state_pop3 || state > state_webmail ||
           wizard_settings.service_enabled[state - state_pop3] != 0;
}

void redraw(int state) {
    if (built_screens[state] != nullptr) built_screens[state]->redraw();
    // A screen that is not built yet forgets a key all the same, by the window of one that is.
    else if (built_screens[state_password] != nullptr)
        drain_key(built_screens[state_password]->getFrame().getCursesWindow(), false);
}

}  // namespace

int next_listener_state(int state) {
    do ++state;
    while (!is_enabled(state));
    return state;
}

int previous_listener_state(int state) {
    do --state;
    while (!is_enabled(state));
    return state;
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
