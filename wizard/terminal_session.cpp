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

void draw_ruler(int row) {
    const int columns = getmaxx(stdscr);
    for (int col = 0; col < columns; ++col) mvwaddch(stdscr, row, col, '-');
}

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
    wbkgd(stdscr, COLOR_PAIR(pair_screen));
    wattron(stdscr, A_BOLD);
    mvwprintw(stdscr, 0, 0, "%s", "Welcome to the Teluma Config Utility (v6.0.0)");
    draw_ruler(1);
    mvwprintw(stdscr, rows - 1, 0, "%s", "Use TAB key to jump from one control to another");
    draw_ruler(rows - 2);
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
    stop_process(signal_number);
    on_resize(SIGWINCH);
    errno = errno_before;
}
