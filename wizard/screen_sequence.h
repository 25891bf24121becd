#pragma once

#include "wizard/base/screen_state.h"

/// Calls the procedure of the screen that `screen_state` names, again and again, until it is
/// state_end. Returns how the wizard has ended.
WizardEnd run_screens();
