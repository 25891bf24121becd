#pragma once

/// The curses colour pairs of the wizard; start-up defines them.
enum ColourPair {
    pair_focus = 1,   ///< white on black: what has the keyboard
    pair_screen = 2,  ///< white on blue: everything else
    pair_button = 3   ///< black on red: buttons
};
