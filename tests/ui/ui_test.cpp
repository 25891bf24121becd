#include "tests/ui/ui_test.h"

#include <unistd.h>

#include "tests/support/wait_until.h"
#include "ui/main_window.h"
#include "wizard/base/screen_state.h"

UiTest::UiTest(int rows, int cols)
    : terminal(rows, cols), rootFrame(std::make_unique<Window>(stdscr, nullptr)) {
    main_window = root();
    screen_rows = rows;
    screen_cols = cols;
    screen_state = state_password;
    alarm(static_cast<unsigned>(patience().count() / 1000));
}

UiTest::~UiTest() {
    alarm(0);
    on_screen = {};
}

ScreenImage UiTest::shown() {
    update_panels();
    doupdate();
    return terminal.image();
}

ScreenImage UiTest::drawn(Window& window) {
    window.draw();
    return look(window);
}

ScreenImage UiTest::look(const Window& window) {
    WINDOW* place = window.getCursesWindow();
    return shown().region(getbegy(place), getbegx(place), getmaxy(place), getmaxx(place));
}

void UiTest::resizeTo(int rows, int cols) {
    terminal.resize(rows, cols);
    clear();
    endwin();
    refresh();
    screen_rows = rows;
    screen_cols = cols;
}

int panels_shown() {
    int count = 0;
    for (PANEL* panel = panel_above(nullptr); panel != nullptr; panel = panel_above(panel)) ++count;
    return count;
}

Position place_of(const Window& window) { return {window.getRow(), window.getCol()}; }

Position size_of(const Window& window) { return {window.getHeight(), window.getWidth()}; }

Position cursor_in(const Window& window) {
    return {getcury(window.getCursesWindow()), getcurx(window.getCursesWindow())};
}
