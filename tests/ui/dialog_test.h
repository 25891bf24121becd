#pragma once

#include "tests/support/golden.h"
#include "tests/support/waits.h"
#include "tests/ui/ui_test.h"
#include "ui/message_dialogs.h"
#include "ui/terminal/colours.h"

/// The terminal as the dialogs find it: blue, in the domain screen. What a dialog has drawn last
/// stays on the terminal after it has gone, until the screen under it is drawn again.
class DialogTest : public UiTest {
  protected:
    DialogTest() {
        paintScreen();
        screen_state = state_domain;
    }

    /// Gives the terminal another size and lets what is open follow, as the program does.
    void resizeDialogTo(int rows, int cols) {
        resizeTo(rows, cols);
        paintScreen();
        place_dialog();
        placePending();
    }

    void paintScreen() {
        wbkgd(stdscr, COLOR_PAIR(pair_screen));
        refresh();
    }

    KeyWaits waits;
};

/// Sizes that a terminal may have besides the usual one.
const Position other_sizes[] = {{20, 72}, {25, 81}, {60, 200}};
