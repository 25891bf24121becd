#include "ui/keys.h"

#include <unistd.h>

#include "wizard/signal_gate.h"

namespace {

int key_at_hand(WINDOW* window) {
    const bool polled = is_nodelay(window);
    nodelay(window, TRUE);
    const int key = wgetch(window);
    nodelay(window, polled);
    return key;
}

}  // namespace

bool is_press(int key) {
    return key == key_enter || key == key_space;
}

int read_key(WINDOW* window) {
    if (window == nullptr)
        window = stdscr;
    keypad(window, TRUE);
    int key = key_at_hand(window);
    while (key == ERR) {
        wait_readable(STDIN_FILENO);
        key = key_at_hand(window);
    }
    return key;
}

void drain_key(WINDOW* window, bool stay_in_no_delay) {
    // wgetch() shows what has changed in its window, but the window may be hidden or may be about
    // to move.
    untouchwin(window);
    keypad(window, TRUE);
    nodelay(window, TRUE);
    wgetch(window);
    nodelay(window, stay_in_no_delay);
}
