#pragma once

#include <memory>

#include "ui/window.h"

/// What is on the screen, besides the question screens.
struct OnScreen {
    int rows = -1;  ///< the terminal's size as measured last; -1 while there is no standard screen
    int cols = -1;
    Window* root = nullptr;                     ///< owned by who has started curses
    Window* dialog = nullptr;                   ///< the frame of the dialog that is open
    std::unique_ptr<Window> pending = nullptr;  ///< that of the box of ui/message_dialogs
};
extern OnScreen on_screen;

inline int& screen_rows = on_screen.rows;
inline int& screen_cols = on_screen.cols;

/// The root frame, over the standard screen, in which every screen and dialog stands; null while
/// curses is not in use.
inline Window*& main_window = on_screen.root;

/// The smallest terminal that every screen fits into.
constexpr int min_screen_rows = 20;
constexpr int min_screen_cols = 72;

/// Where something `size` long starts to stand in the middle of `available`; 0 where it is longer,
/// so that its beginning is what shows.
constexpr int centred(int available, int size) {
    return size < available ? (available - size) / 2 : 0;
}
