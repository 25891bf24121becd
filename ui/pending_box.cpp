#include "ui/pending_box.h"

#include <algorithm>

#include "ui/main_window.h"
#include "ui/terminal/colours.h"
#include "ui/terminal/terminal.h"
#include "wizard/base/screen_state.h"

namespace {

constexpr int apply_rows = 18;
constexpr int apply_cols = 60;

// Writes the message in lines of so many characters.
void print_message(const PendingBox& box, int line_length) {
    const int length = static_cast<int>(box.message.size());
    WINDOW* window = box.frame->getCursesWindow();
    werase(window);
    for (int at = 0, line = 3; at < length; at += line_length)
        mvwaddnstr(window, line++, 2, box.message.c_str() + at, line_length);
}

void put(Window& frame, int row, int col, int rows, int cols) {
    frame.setSize(rows, cols);
    frame.move(row, col);
}

void open_box(const char* message, const char* title, bool lists_progress) {
    closePending();
    on_screen.pending = std::make_unique<PendingBox>(PendingBox{
        make_frame(apply_rows, apply_cols, title), message, title, lists_progress, screen_state});
    screen_state = state_pending;
    keypad(pending_frame()->getCursesWindow(), TRUE);
    placePending();
    curs_set(0);
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
    if (on_screen.pending != nullptr)
        pending_frame()->hide();
}

void closePending() {
    if (on_screen.pending == nullptr)
        return;
    hidePending();
    screen_state = on_screen.pending->state_before;
    on_screen.pending.reset();
}

void placePending() {
    if (on_screen.pending == nullptr)
        return;
    const PendingBox& box = *on_screen.pending;
    const int length = static_cast<int>(box.message.size());
    const int room = screen_cols - 4;
    const bool is_too_long = !box.lists_progress && length > room;
    if (box.lists_progress) {
        put(*box.frame, centred(screen_rows, apply_rows), centred(screen_cols, apply_cols + 4),
            apply_rows, apply_cols);
    } else if (is_too_long) {
        const int rows = length / (room - 4) + 7;
        put(*box.frame, centred(screen_rows, rows), 3, rows, room - 4);
    } else {
        const int cols = std::max(length + 4, 8);
        put(*box.frame, centred(screen_rows, 7), centred(room, cols), 7, cols);
    }
    print_message(box, is_too_long ? room - 8 : std::max(length, 1));
    box.frame->setTitle(is_too_long ? "Error!" : box.title.c_str(), pair_screen);
    box.frame->draw();
}

Window* pending_frame() {
    return on_screen.pending != nullptr ? on_screen.pending->frame.get() : nullptr;
}
