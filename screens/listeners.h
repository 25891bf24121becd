#pragma once

#include "wizard/base/wizard_settings.h"

/// One network listener of the server, as its screen knows it.
struct Listener {
    int state;                      ///< the ScreenState of its screen
    const char* title;              ///< of the screen
    const char* default_port;       ///< in the port fields at first
    const char* loopback_question;  ///< asked when a loopback interface is chosen
    int WizardSettings::*interface_index;
    int WizardSettings::*port;

    /// The answers are taken as they are given: the interface when the bar moves, the port when
    /// "OK" is pressed. Otherwise both are taken when they are accepted, the interface also when
    /// "OK" is pressed.
    bool takes_answers_at_once;
};

constexpr int listener_count = 5;

/// All listeners, in the order of their screens.
extern const Listener listeners[listener_count];

/// The place in `listeners` of the listener whose screen has `state`.
int listener_index(int state);
