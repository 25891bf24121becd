#include "wizard/base/screen_moves.h"

#include "wizard/base/screen_state.h"
#include "wizard/base/wizard_settings.h"

namespace {

// A move that depends on the services that are enabled.
constexpr int by_services = -1;
constexpr int nowhere = -2;

struct Moves {
    int next;
    int back;
};

const Moves moves[screen_count] = {
    /* password  */ {state_domain, nowhere},
    /* domain    */ {state_aliases, state_password},
    /* aliases   */ {state_webadmin, state_domain},
    /* webadmin  */ {state_smtp, state_aliases},
    /* smtp      */ {state_services, state_webadmin},
    /* services  */ {by_services, state_smtp},
    /* pop3      */ {by_services, by_services},
    /* imap      */ {by_services, by_services},
    /* webmail   */ {by_services, by_services},
    /* relay     */ {state_sendmail, by_services},
    /* sendmail  */ {nowhere, state_relay},
};

}  // namespace

int next_screen_state(int state) {
    const int next = moves[state].next;
    return next == by_services ? next_listener_state(state) : next;
}

int previous_screen_state(int state) {
    const int back = moves[state].back;
    return back == by_services ? previous_listener_state(state) : back;
}

int next_listener_state(int state) {
    if (state == state_smtp)
        return state_services;
    int service = state - state_services;
    while (service < optional_service_count && !wizard_settings.service_enabled[service])
        ++service;
    return service + state_pop3;
}

int previous_listener_state(int state) {
    if (state == state_smtp)
        return state_webadmin;
    int service = state - state_imap;
    while (service >= 0 && !wizard_settings.service_enabled[service])
        --service;
    return service + state_pop3;
}
