#include "ui/keys.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <vector>

#include "ui/terminal/terminal.h"
#include "ui/window.h"
#include "wizard/system/signal_gate.h"

namespace {

constexpr int key_escape = 27;
constexpr int key_redraw = 12;        // Ctrl-L
constexpr int key_unknown = KEY_MAX;  // the largest that curses can have; no screen knows it

// Whether what has been read after ESC is the beginning of a control sequence, and not the whole.
// A Linux console sends ESC [ [ and a letter for its first function keys.
bool goes_on(const std::vector<int>& bytes) {
    constexpr size_t longest = 32;
    const int last = bytes.back();
    if (bytes.size() == 1) return last == '[' || last == 'O';
    if (bytes.size() == 2 && bytes.front() == '[' && last == '[') return true;
    return last >= ' ' && last <= '?' && last != '$' && bytes.size() < longest;
}

// The last byte is that of ECMA-48, or $, with which rxvt tells of Shift.
bool is_whole(const std::vector<int>& bytes) {
    const int last = bytes.back();
    return bytes.size() > 1 && ((last >= '@' && last <= '~') || last == '$');
}

// Takes away the rest of a control sequence that curses does not know, if each byte arrives within
// ESCDELAY milliseconds. False if ESC begins no whole one; everything is then there to be read.
bool skip_control_sequence(WINDOW* window) {
    std::vector<int> bytes;
    do {
        bytes.push_back(wgetch(window));
        wtimeout(window, ESCDELAY);
    } while (goes_on(bytes));
    if (is_whole(bytes)) return true;
    if (bytes.back() == ERR) bytes.pop_back();
    std::for_each(bytes.rbegin(), bytes.rend(), ungetch);
    return false;
}

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

}  // namespace

bool is_press(int key) { return key == key_enter || key == key_space; }

int read_key(const Window& widget) {
    // Somebody who never stops typing, or a paste, must not keep the user from interrupting; a
    // resize can wait until there is nothing to read, as it swallows keys.
    let_signals_in(SIGWINCH);
    int read_in_vain = 0;
    for (;;) {
        // A resize during the wait may have given the widget another curses window.
        WINDOW* window = widget.getCursesWindow() != nullptr ? widget.getCursesWindow() : stdscr;
        const int key = key_at_hand(window, is_nodelay(window));
        if (key == key_redraw) redraw_terminal();
        if (key != ERR) return key == KEY_ENTER ? key_enter : key;
        read_in_vain = has_input() ? read_in_vain + 1 : 0;
        // The input is at its end, the terminal gone. Once somebody else may have read it, a shell.
        if (read_in_vain == 3) {
            raise(SIGHUP);
            let_signals_in();
        }
        send_output();
        wait_for(STDIN_FILENO, POLLIN);
    }
}

void drain_key(WINDOW* window, bool stay_in_no_delay) {
    // wgetch() shows what has changed in its window, which may be hidden or about to move.
    untouchwin(window);
    key_at_hand(window, stay_in_no_delay);
}
