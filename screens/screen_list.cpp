#include "screens/screen_list.h"

#include "screens/alias_screen.h"
#include "screens/domain_screen.h"
#include "screens/listener_screen.h"
#include "screens/password_screen.h"
#include "screens/relay_screen.h"
#include "screens/sendmail_screen.h"
#include "screens/services_screen.h"
#include "wizard/base/screen_state.h"

Screen& screen_of(int state) {
    static Screen* const screens[screen_count] = {
        &password_screen, &domain_screen,   &alias_screen,    &webadmin_screen,
        &service_screen,  &services_screen, &service_screen,  &service_screen,
        &service_screen,  &relay_screen,    &sendmail_screen,
    };
    return *screens[state];
}

void create_screens() {
    password_screen_create();
    domain_screen_create();
    services_screen_create();
    sendmail_screen_build();
    relay_screen_build();
}

void redraw_screens() {
    const bool in_turn = screen_state == state_services || screen_state == state_relay ||
                         screen_state == state_sendmail;
    if (screen_state < screen_count && !in_turn)
        screen_redraw(screen_of(screen_state));
    services_screen_redraw();
    relay_screen_redraw();
    sendmail_screen_redraw();
}

void destroy_screens() {
    for (int state = 0; state < screen_count; ++state)
        screen_destroy(screen_of(state));
}
