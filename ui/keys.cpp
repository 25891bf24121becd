#include "ui/keys.h"

#include <poll.h>
#include <unistd.h>

#include <csignal>

#include "ui/terminal/terminal.h"
#include "ui/window.h"
#include "wizard/system/signal_gate.h"

namespace {

constexpr int key_escape = 27;
constexpr int key_redraw = 12;  // Ctrl-L

// No screen knows it: the largest that curses can have.
constexpr int key_unknown = KEY_MAX;

// The next key, or ERR where there is none; leaves the window in no-delay mode if `polled`, else
// out of it.
int key_at_hand(WINDOW* window, bool polled) {
    keypad(window, TRUE);
    nodelay(window, TRUE);
    int key = wgetch(window);
    if (key == key_escape && skip_control_sequence(window)) key = key_unknown;
    nodelay(window, polled);
    return key;
}

bool has_input() {
    pollfd input = {STDIN_FILENO, POLLIN, 0};
    return poll(&input, 1, 0) == 1;
}

// Input of which nothing can be read has come to its end: the terminal is gone.
void hang_up() {
    raise(SIGHUP);
    let_signals_in();
}

}  // namespace

bool is_press(int key) { return key == key_enter || key == key_space; }

int read_key(const Window& widget) {
    // Somebody who never stops typing, or a paste, must not keep the user from interrupting; a
    // resize can wait until there is nothing to read, as it swallows keys.
    let_signals_in(SIGWINCH);
    // What was there may have been read by somebody else, as a shell, but not again and again.
    constexpr int enough_in_vain = 3;
    int in_vain = 0;
    for (;;) {
        // A resize during the wait may have given the widget another curses window.
        WINDOW* window = widget.getCursesWindow() != nullptr ? widget.getCursesWindow() : stdscr;
        const int key = key_at_hand(window, is_nodelay(window));
        if (key == key_redraw) redraw_terminal();
        if (key != ERR) return key == KEY_ENTER ? key_enter : key;
        in_vain = has_input() ? in_vain + 1 : 0;
        if (in_vain == enough_in_vain) hang_up();
        send_output();
        wait_for(STDIN_FILENO, POLLIN);
    }
}

void drain_key(WINDOW* window, bool stay_in_no_delay) {
    // wgetch() shows what has changed in its window, but the window may be hidden or may be about
    // to move.
    untouchwin(window);
    key_at_hand(window, stay_in_no_delay);
}
