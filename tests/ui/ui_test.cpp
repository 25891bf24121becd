#include "tests/ui/ui_test.h"

#include <unistd.h>

#include <vector>

#include "tests/support/wait_until.h"
#include "ui/main_window.h"
#include "wizard/base/screen_state.h"

namespace {

void measure_screen() {
    screen_rows = getmaxy(stdscr);
    screen_cols = getmaxx(stdscr);
}

}  // namespace

UiTest::UiTest(int rows, int cols)
    : terminal(rows, cols), rootFrame(std::make_unique<Window>(stdscr, nullptr)) {
    main_window = root();
    measure_screen();
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

ScreenImage UiTest::shown(int row, int col, int rows, int cols) {
    return shown().region(row, col, rows, cols);
}

ScreenImage UiTest::drawn(Window& window) {
    window.draw();
    return look(window);
}

ScreenImage UiTest::look(const Window& window) {
    WINDOW* place = window.getCursesWindow();
    return shown(getbegy(place), getbegx(place), getmaxy(place), getmaxx(place));
}

void UiTest::resizeTo(int rows, int cols) {
    terminal.resize(rows, cols);
    clear();
    endwin();
    refresh();
    measure_screen();
}

int panels_shown() {
    int count = 0;
    for (PANEL* panel = panel_above(nullptr); panel != nullptr; panel = panel_above(panel)) ++count;
    return count;
}

Position cursor_in(WINDOW* window) { return {getcury(window), getcurx(window)}; }

std::string line_of(WINDOW* window, int line) {
    std::vector<char> characters(static_cast<size_t>(getmaxx(window)) + 1);
    const Position before = cursor_in(window);
    mvwinnstr(window, line, 0, characters.data(), getmaxx(window));
    wmove(window, before.row, before.col);
    return characters.data();
}
