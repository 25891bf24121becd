// A small full-screen program that the tests of the test support run in a terminal.
//
// It shows its size and the last key. "h" hides the cursor, "v" shows it, "q" ends it with status 3
// and a line of text, "x" ends it without putting the terminal back.

#include <curses.h>
#include <poll.h>
#include <unistd.h>

#include <clocale>
#include <csignal>
#include <cstdio>

namespace {

void draw(const char* key) {
    bkgd(COLOR_PAIR(2));
    erase();
    attron(A_BOLD);
    mvaddstr(0, 0, "A sample");
    attroff(A_BOLD);
    mvprintw(1, 0, "%d rows, %d columns", LINES, COLS);
    mvprintw(2, 0, "key %s", key);
    attrset(COLOR_PAIR(3));
    mvaddstr(LINES - 1, 0, "h, v, q or x");
    attrset(A_NORMAL);
    WINDOW* button = derwin(stdscr, 3, 6, 4, 2);
    box(button, 0, 0);
    mvwaddstr(button, 1, 1, "Next");
    delwin(button);
    move(5, 3);
    refresh();
}

/// A key, or KEY_RESIZE for a signal that came at any time since the last key: signals are let in
/// only where the program waits, so that none can slip in between the look and the wait.
int next_key(const sigset_t& waiting_mask) {
    int key;
    while ((key = getch()) == ERR) {
        pollfd keyboard{STDIN_FILENO, POLLIN, 0};
        ppoll(&keyboard, 1, nullptr, &waiting_mask);
    }
    return key;
}

void run(const sigset_t& waiting_mask) {
    draw("none");
    for (int key; (key = next_key(waiting_mask)) != 'q';) {
        if (key == 'x')
            _exit(4);
        if (key == 'h' || key == 'v')
            curs_set(key == 'h' ? 0 : 1);
        draw(keyname(key));
    }
}

}  // namespace

int main() {
    sigset_t resizes;
    sigset_t waiting_mask;
    sigemptyset(&resizes);
    sigaddset(&resizes, SIGWINCH);
    sigprocmask(SIG_BLOCK, &resizes, &waiting_mask);
    std::setlocale(LC_CTYPE, "");
    initscr();
    start_color();
    cbreak();
    noecho();
    keypad(stdscr, TRUE);
    nodelay(stdscr, TRUE);
    init_pair(2, COLOR_WHITE, COLOR_BLUE);
    init_pair(3, COLOR_BLACK, COLOR_RED);
    run(waiting_mask);
    endwin();
    std::printf("\n\tall done\n");
    return 3;
}
