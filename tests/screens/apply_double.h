#pragma once

#include "wizard/base/screen_state.h"

/// What stands in the place of the apply sequence here: it touches no server, notes how it was
/// called and sends the user on.
struct ApplyDouble {
    int leads_to = state_end;  // the `screen_state` that it sets

    int calls = 0;
    int sendmail_wrapper = -1;    // the answer that it found in the settings
    int state = -1;               // the `screen_state` that it found
    int focus = -1;               // and the sendmail screen's focus
    bool screen_is_gone = false;  // the sendmail screen had been taken off the panel stack
};

extern ApplyDouble apply_double;
