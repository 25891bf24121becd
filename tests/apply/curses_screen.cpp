#include "tests/apply/curses_screen.h"

#include <curses.h>

#include "ui/main_window.h"
#include "ui/window.h"
#include "wizard/base/screen_state.h"
#include "wizard/ending.h"
#include "wizard/terminal_session.h"

CursesScreen::CursesScreen(int rows, int cols) : terminal(rows, cols) {
    check_terminal_size();
    draw_background();
    main_window = new Window(stdscr, nullptr);
}

CursesScreen::~CursesScreen() {
    release_screens();
    screen_state = state_password;
}
