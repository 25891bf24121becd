#pragma once

/// A key of a terminal's keyboard. What the cursor keys send follows the mode that the program has
/// put the terminal in.
enum class Key {
    tab,
    enter,
    space,
    escape,
    up,
    down,
    left,
    right,
    home,
    end,
    page_up,
    page_down,
    insert,
    del,
    backspace,       // sends 127, as most terminals do
    backspace_as_8,  // sends 8, as the others do
    ctrl_c,
};
