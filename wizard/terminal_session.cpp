#include "wizard/terminal_session.h"

#include <curses.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>

#include "apply/progress_list.h"
#include "screens/screen_table.h"
#include "ui/keys.h"
#include "ui/main_window.h"
#include "ui/message_dialogs.h"
#include "ui/terminal/colours.h"
#include "ui/terminal/terminal.h"
#include "ui/window.h"
#include "wizard/base/screen_state.h"
#include "wizard/ending.h"
#include "wizard/system/signal_gate.h"

bool check_terminal_size() {
    screen_rows = getmaxy(stdscr);
    screen_cols = getmaxx(stdscr);
    return screen_cols >= min_screen_cols && screen_rows >= min_screen_rows;
}

namespace {

void redraw_dialogs() {
    if (screen_state == state_message || screen_state == state_yes_no) {
        curs_set(0);
        drain_key(on_screen.dialog->getCursesWindow(), true);
    }
    place_dialog();
    placePending();
    progress_place_all();
}

void redraw() {
    draw_background();
    redraw_screens();
    redraw_dialogs();
    show_frame();
}

}  // namespace

void draw_background() {
    const int rows = getmaxy(stdscr);
    const int cols = getmaxx(stdscr);
    wbkgd(stdscr, COLOR_PAIR(pair_screen));
    wattron(stdscr, A_BOLD);
    mvaddstr(0, 0, "Welcome to the Teluma Config Utility (v6.0.0)");
    mvhline(1, 0, '-', cols);
    mvaddstr(rows - 1, 0, "Use TAB key to jump from one control to another");
    mvhline(rows - 2, 0, '-', cols);
    wattroff(stdscr, A_BOLD);
}

void on_resize(int /*signal_number*/) {
    const int errno_before = errno;
    if (!renew_terminal())
        raise(SIGHUP);
    else if (!check_terminal_size())
        std::exit(refuse_terminal());
    else
        redraw();
    errno = errno_before;
}

void continue_wizard(int /*signal_number*/) {
    const int errno_before = errno;
    retake_terminal();
    raise(SIGWINCH);
    errno = errno_before;
}

void suspend_wizard(int signal_number) {
    const int errno_before = errno;
    close_terminal();
    call_stoppable(signal_number, [signal_number] { return raise(signal_number); });
    on_resize(SIGWINCH);
    errno = errno_before;
}
