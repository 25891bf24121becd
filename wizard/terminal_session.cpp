#include "wizard/terminal_session.h"

#include <curses.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "apply/progress_list.h"
#include "screens/screen_table.h"
#include "ui/colours.h"
#include "ui/keys.h"
#include "ui/modal_dialog.h"
#include "ui/pending_box.h"
#include "ui/terminal/terminal_output.h"
#include "ui/terminal/terminals.h"
#include "ui/window.h"
#include "wizard/base/screen_size.h"
#include "wizard/base/screen_state.h"
#include "wizard/release_screens.h"
#include "wizard/system/signal_gate.h"

void check_terminal_size() {
    screen_rows = getmaxy(stdscr);
    screen_cols = getmaxx(stdscr);
    if (screen_cols >= min_screen_cols && screen_rows >= min_screen_rows)
        return;
    close_screen();
    std::puts("Please enlarge your window so it will have at least 72 columns and 20 lines!");
    release_screens();
    std::exit(0);
}

namespace {

void draw_ruler(int row) {
    const int columns = getmaxx(stdscr);
    for (int col = 0; col < columns; ++col)
        mvwaddch(stdscr, row, col, '-');
}

void redraw_dialogs() {
    if (screen_state == state_message || screen_state == state_yes_no) {
        curs_set(0);
        drain_key(ModalDialog::open()->getFrame()->getCursesWindow(), true);
    }
    if (ModalDialog::open() != nullptr)
        ModalDialog::open()->place();
    placePending();
    progress_place_all();
}

void redraw() {
    check_terminal_size();
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
    if (renew_screen())
        redraw();
    else
        raise(SIGHUP);
    errno = errno_before;
}

void continue_wizard(int /*signal_number*/) {
    const int errno_before = errno;
    retake_terminals();
    raise(SIGWINCH);
    errno = errno_before;
}

void suspend_wizard(int signal_number) {
    const int errno_before = errno;
    close_screen();
    stop_process(signal_number);
    on_resize(SIGWINCH);
    errno = errno_before;
}
