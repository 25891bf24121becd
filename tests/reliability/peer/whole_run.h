#pragma once

#include <string>
#include <vector>

#include "tests/support/installed_server.h"

/// A step of the apply sequence with everything chosen, as far as it talks to the server.
struct TalkingStep {
    const char* name;
    Lines commands;
    std::string message;  // when it fails
    int state;            // of the screen that the user is sent back to

    /// The commands, by their places, whose failure can be made good by doing the step again: the
    /// server has left all contexts by then, and knows nothing that it takes only once.
    std::vector<size_t> repeatable;
};

/// All of them, in order, behind the login.
const std::vector<TalkingStep>& talking_steps();

/// A command of the whole run.
struct PlacedCommand {
    std::string text;
    int count;     // the how-manieth of this text it is, counted from 1
    Lines before;  // what the server was told before it
};

/// The `index`th command of the `step`th of the steps.
PlacedCommand placed_command(size_t step, size_t index);

/// Everything that the server is told in a whole run, "-A PASSWORD" first.
Lines whole_run();
