#pragma once

#include "wizard/base/screen_state.h"

/// Applies every answer in the settings to the server, step by step, with a line of progress for
/// each. Steps that have succeeded before are skipped, and their passwords overwritten. When a step
/// fails, the user is told and `screen_state` names the screen where its answer can be changed; the
/// state is state_end once all steps are done, the user has pressed "OK" and the server has been
/// stopped. Returns whether that was the wizard's end. Ends the program with status 1 when the
/// login to the server fails.
WizardEnd apply_configuration();
