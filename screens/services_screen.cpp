#include "screens/services_screen.h"

#include "screens/choice_screen.h"
#include "ui/choice_list.h"
#include "wizard/base/screen_moves.h"
#include "wizard/base/screen_state.h"
#include "wizard/base/wizard_settings.h"

Screen services_screen{state_services};

namespace {

ChoiceList* services_list;

void go_next() {
    store_choices(*services_list, wizard_settings.service_enabled);
    screen_focus(state_services) = focus_choices;
    screen_state = next_screen_state(state_services);
}

void go_back() {
    screen_leave(previous_screen_state(state_services));
}

}  // namespace

void services_screen_create() {
    constexpr int cols = 60;
    const unsigned char all_ticked[optional_service_count] = {1, 1, 1};
    services_list = create_choice_screen(
        services_screen, {"Services Selection", cols, 4, cols - 11, go_next, go_back},
        "Which one of the following services do you want to enable in Teluma?",
        {"POP3", "IMAP", "WebMail"}, all_ticked);
    screen_hide(services_screen);
}

void services_screen_redraw() {
    screen_redraw(services_screen);
}

void services_screen_entry() {
    screen_draw(services_screen);
    screen_run(services_screen);
    screen_hide(services_screen);
}
