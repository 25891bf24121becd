#pragma once

/// Calls the procedure of the screen that `screen_state` names, again and again, until it is
/// state_end.
void run_screens();
