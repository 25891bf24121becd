#pragma once

#include <memory>
#include <string>

#include "ui/window.h"

struct ModalDialog;

/// A box that stays on the screen while slow work runs; see ui/message_dialogs.
struct PendingBox {
    std::unique_ptr<Window> frame;
    std::string message;
    std::string title;
    bool lists_progress;
    int state_before;  ///< the `screen_state` to go back to
};

/// What is on the screen, besides the question screens.
struct OnScreen {
    int rows = -1;  ///< the terminal's size as measured last; -1 while there is no standard screen
    int cols = -1;
    Window* root = nullptr;         ///< owned by who has started curses
    ModalDialog* dialog = nullptr;  ///< the one that is open; see ui/message_dialogs
    std::unique_ptr<PendingBox> pending = nullptr;
};
extern OnScreen on_screen;

inline int& screen_rows = on_screen.rows;
inline int& screen_cols = on_screen.cols;

/// The root frame, over the standard screen: what every screen and dialog stands in. Null before
/// curses is started and after the widgets have been released.
inline Window*& main_window = on_screen.root;

/// The smallest terminal that every screen fits into.
constexpr int min_screen_rows = 20;
constexpr int min_screen_cols = 72;

/// Where something `size` long starts to stand in the middle of `available`; 0 where it is longer,
/// so that its beginning is what shows.
constexpr int centred(int available, int size) {
    return size < available ? (available - size) / 2 : 0;
}

/// Creates the titled frame of a screen or dialog, in the wizard's colours, in the middle of the
/// root frame.
std::unique_ptr<Window> make_frame(int rows, int cols, const char* title);
