#include "wizard/base/screen_state.h"

ScreenPlace screen_place;

int& screen_focus(int state) {
    const bool shares_focus = state == state_pop3 || state == state_imap || state == state_webmail;
    return screen_place.focus[shares_focus ? state_smtp : state];
}
