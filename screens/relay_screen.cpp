#include "screens/relay_screen.h"

#include <algorithm>
#include <string>
#include <vector>

#include "screens/choice_screen.h"
#include "ui/choice_list.h"
#include "wizard/base/host_facts.h"
#include "wizard/base/screen_moves.h"
#include "wizard/base/screen_state.h"
#include "wizard/base/wizard_settings.h"

Screen relay_screen{state_relay};

namespace {

ChoiceList* network_list;

std::vector<std::string> network_texts() {
    std::vector<std::string> texts;
    for (int i = 0; i < relay_network_count; ++i) {
        const relay_network& record = relay_network_list[i];
        texts.push_back(std::string(record.network) + "/" + record.netmask);
    }
    return texts;
}

void leave(int state) {
    store_choices(*network_list, wizard_settings.relay_ticks);
    screen_focus(state_relay) = focus_choices;
    screen_state = state;
}

void go_next() {
    leave(next_screen_state(state_relay));
}

void go_back() {
    leave(previous_screen_state(state_relay));
}

}  // namespace

void relay_screen_build() {
    constexpr int cols = 60;
    unsigned char* ticks = wizard_settings.relay_ticks;
    std::fill(ticks, ticks + relay_network_count, 1);
    network_list = create_choice_screen(
        relay_screen, {"Relay Configuration", cols, 3, cols - 11, go_next, go_back},
        "Please select the networks which are allowed to relay mails through TELUMA, without "
        "requiring authentication:",
        network_texts(), ticks);
    screen_hide(relay_screen);
}

void relay_screen_redraw() {
    screen_redraw(relay_screen);
}

void relay_screen_run() {
    screen_draw(relay_screen);
    screen_run(relay_screen);
    screen_hide(relay_screen);
}
