#include "ui/pending_box.h"

#include <algorithm>
#include <memory>
#include <string>

#include "ui/terminal/colours.h"
#include "ui/main_window.h"
#include "ui/terminal/terminal.h"
#include "ui/window.h"
#include "wizard/base/screen_size.h"
#include "wizard/base/screen_state.h"

namespace {

constexpr int message_row = 3;
constexpr int message_col = 2;
constexpr int apply_rows = 18;
constexpr int apply_cols = 60;

struct Geometry {
    int row;
    int col;
    int rows;
    int cols;
};

struct PendingBox {
    std::unique_ptr<Window> frame;
    std::string message;
    std::string title;
    bool lists_progress = false;
    int state_before = 0;
};

PendingBox pending;

int widest_message() {
    return screen_cols - 4;
}

int message_length() {
    return static_cast<int>(pending.message.size());
}

bool message_is_too_long() {
    return !pending.lists_progress && message_length() > widest_message();
}

Geometry geometry() {
    if (pending.lists_progress)
        return {centred(screen_rows, apply_rows), centred(screen_cols, apply_cols + 4), apply_rows,
                apply_cols};
    if (message_is_too_long()) {
        const int cols = widest_message() - 4;
        const int rows = message_length() / cols + 7;
        return {centred(screen_rows, rows), 3, rows, cols};
    }
    const int rows = 7;
    const int cols = std::max(message_length() + 4, 8);
    return {centred(screen_rows, rows), centred(widest_message(), cols), rows, cols};
}

void print_message() {
    WINDOW* window = pending.frame->getCursesWindow();
    const size_t line_length = message_is_too_long() ? static_cast<size_t>(widest_message() - 8)
                                                     : pending.message.size() + 1;
    int line = message_row;
    for (size_t at = 0; at < pending.message.size(); at += line_length)
        mvwprintw(window, line++, message_col, "%s",
                  pending.message.substr(at, line_length).c_str());
}

void draw_box() {
    werase(pending.frame->getCursesWindow());
    print_message();
    pending.frame->setTitle(message_is_too_long() ? "Error!" : pending.title.c_str(), pair_screen);
    pending.frame->draw();
}

void open_box(const char* message, const char* title, bool lists_progress) {
    closePending();
    pending.message = message;
    pending.title = title;
    pending.lists_progress = lists_progress;
    pending.state_before = screen_state;
    screen_state = state_pending;
    const Geometry place = geometry();
    pending.frame =
        std::make_unique<Window>(main_window, place.row, place.col, place.rows, place.cols);
    pending.frame->create();
    pending.frame->setColors(pair_screen, pair_screen, 1);
    keypad(pending.frame->getCursesWindow(), TRUE);
    curs_set(0);
    draw_box();
    show_frame();
}

}  // namespace

void showPending(const char* message, const char* title) {
    open_box(message, title, false);
}

void showApplyPending(const char* message, const char* title) {
    open_box(message, title, true);
}

void hidePending() {
    if (pending.frame != nullptr)
        pending.frame->hide();
}

void closePending() {
    if (pending.frame == nullptr)
        return;
    hidePending();
    pending.frame.reset();
    screen_state = pending.state_before;
}

void placePending() {
    if (pending.frame == nullptr)
        return;
    const Geometry place = geometry();
    pending.frame->setSize(place.rows, place.cols);
    pending.frame->move(place.row, place.col);
    draw_box();
}

Window* pending_frame() {
    return pending.frame.get();
}
