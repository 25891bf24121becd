#include "wizard/base/screen_state.h"

int screen_state = state_password;

int& screen_focus(int state) {
    static int focus[screen_count] = {};
    const bool shares_smtp_screen =
        state == state_pop3 || state == state_imap || state == state_webmail;
    return focus[shares_smtp_screen ? state_smtp : state];
}
