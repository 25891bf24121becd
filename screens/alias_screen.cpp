#include "screens/alias_screen.h"

#include <string>

#include "screens/choice_screen.h"
#include "ui/choice_list.h"
#include "wizard/base/screen_moves.h"
#include "wizard/base/screen_state.h"
#include "wizard/base/wizard_settings.h"

Screen alias_screen{state_aliases};

namespace {

constexpr int cols = 62;
// Where the button stands on the domain screen, which is narrower.
constexpr int next_col = 52;

ChoiceList* alias_list;

void store_aliases() {
    unsigned char chosen[3] = {};
    store_choices(*alias_list, chosen);
    wizard_settings.alias_root_to_postmaster = chosen[0];
    wizard_settings.alias_localhost = chosen[1];
    wizard_settings.alias_localhost_localdomain = chosen[2];
}

void leave(int state) {
    screen_leave(state);
    store_aliases();
}

void go_next() {
    leave(next_screen_state(state_aliases));
}

void go_back() {
    leave(previous_screen_state(state_aliases));
}

void create() {
    const std::string question = std::string("Select which aliases to configure for the \"") +
                                 wizard_settings.primary_domain + "\" domain.";
    const unsigned char chosen[] = {wizard_settings.alias_root_to_postmaster,
                                    wizard_settings.alias_localhost,
                                    wizard_settings.alias_localhost_localdomain};
    alias_list = create_choice_screen(alias_screen,
                                      {"Alias Configuration", cols, 4, next_col, go_next, go_back},
                                      question.c_str(),
                                      {"Redirect all mails for root account to postmaster",
                                       "Add the 'localhost' alias to this domain",
                                       "Add the 'localhost.localdomain' alias to this domain"},
                                      chosen);
}

}  // namespace

void alias_screen_entry() {
    create();
    screen_draw(alias_screen);
    screen_run(alias_screen);
    screen_hide(alias_screen);
    screen_destroy(alias_screen);
}
