#pragma once

#include "wizard/base/screen_state.h"

/// Applies every answer in the settings to the server, step by step, with a line of progress for
/// each. Steps that have succeeded before are skipped, and their passwords overwritten.
///
/// Returns not_yet when a step has failed: the user has been told, and `screen_state` names the
/// screen where its answer can be changed; without_login, also told, when the server does not let
/// the wizard in and is to be stopped; out_of_memory; or completed, with state_end, when all is
/// done, the user has pressed "OK" and the server has been stopped.
WizardEnd apply_configuration();
