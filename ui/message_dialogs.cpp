#include "ui/message_dialogs.h"

#include <algorithm>
#include <cstring>
#include <deque>
#include <initializer_list>
#include <utility>

#include "ui/button.h"
#include "ui/keys.h"
#include "ui/label.h"
#include "ui/line_breaker.h"
#include "ui/main_window.h"
#include "ui/terminal/colours.h"
#include "ui/terminal/terminal.h"
#include "wizard/base/screen_state.h"
#include "wizard/system/port_probe.h"

// A button of a dialog, standing below the message.
struct DialogButton {
    const char* caption;
    int col;
    int width;
};

// A titled frame with a message and one or more buttons, the first of which has the focus.
struct ModalDialog {
    ModalDialog(int state, const char* text, const char* title, int width,
                std::initializer_list<DialogButton> dialog_buttons)
        : state_before(std::exchange(screen_state, state)),
          rows(countLines(text, width - 2, break_between_words) + rows_around_message),
          cols(width),
          frame(make_frame(rows, cols, title)),
          message(text, 3, 1, frame.get(), cols - 2, break_between_words) {
        on_screen.dialog = this;
        message.setColors(pair_screen, pair_screen, 1);
        for (const DialogButton& button : dialog_buttons)
            buttons.emplace_back(frame.get(), message.getLineCount() + 4, button.col, 3,
                                 button.width, button.caption, pair_button);
        draw();
    }

    ~ModalDialog() {
        on_screen.dialog = nullptr;
        screen_state = state_before;
    }

    // Returns the index of the button that was pressed.
    int run() {
        for (;;) {
            const int key = read_key(*frame);
            if (is_press(key)) return static_cast<int>(focus);
            if (key != key_tab) continue;
            focus = (focus + 1) % buttons.size();
            draw();
        }
    }

    void place() {
        frame->move(centred(screen_rows, rows), centred(screen_cols, cols));
        message.follow();
        for (Button& button : buttons) button.follow();
        draw();
    }

    void draw() {
        for (size_t i = 0; i < buttons.size(); ++i) {
            buttons[i].setFocused(i == focus);
            buttons[i].draw();
        }
        frame->draw();
        message.draw();
        curs_set(0);
        show_frame();
    }

    static constexpr int rows_around_message = 9;  // title, margins and buttons

    const int state_before;
    const int rows;
    const int cols;
    const std::unique_ptr<Window> frame;
    FormatLabel message;
    std::deque<Button> buttons;
    size_t focus = 0;
};

namespace {

constexpr int widest = 60;
constexpr int yes_no_width = 62;
constexpr int button_width = 6;
constexpr int retry_width = 7;

// As narrow as the message allows, up to a width from which it is broken into lines.
int width_for(const char* message) {
    const size_t length = std::strlen(message);
    return length < widest - 1 ? static_cast<int>(length) + 2 : widest;
}

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

void showMessage(const char* message, const char* title) {
    const int width = width_for(message);
    ModalDialog dialog(state_message, message, title, width,
                       {{"OK", (width - button_width) / 2, button_width}});
    dialog.run();
}

int askYesNo(const char* message, const char* title) {
    ModalDialog dialog(
        state_yes_no, message, title, yes_no_width,
        {{"No", 3, button_width}, {"Yes", yes_no_width - 3 - button_width, button_width}});
    return dialog.run();
}

int askRetryOrBack(const char* message, const char* title, const char* host, int port) {
    {
        const int width = width_for(message);
        const int middle = (width - button_width) / 2;
        ModalDialog dialog(
            state_retry_back, message, title, width,
            {{"Retry", middle + 20, retry_width}, {"Back", middle - 20, button_width}});
        const int retry = 0;
        if (dialog.run() != retry) return 0;
    }
    return probe_port_visibly(host, port) ? 1 : -1;
}

bool probe_port_visibly(const char* host, int port) {
    showPending("Please wait until the port is being checked!", "Operation pending!");
    const bool is_free = probe_port(host, port) != 0;
    closePending();
    return is_free;
}

Window* dialog_frame() {
    return on_screen.dialog != nullptr ? on_screen.dialog->frame.get() : nullptr;
}

void place_dialog() {
    if (on_screen.dialog != nullptr) on_screen.dialog->place();
}

void showPending(const char* message, const char* title) { open_box(message, title, false); }

void showApplyPending(const char* message, const char* title) { open_box(message, title, true); }

void hidePending() {
    if (on_screen.pending != nullptr) pending_frame()->hide();
}

void closePending() {
    if (on_screen.pending == nullptr) return;
    hidePending();
    screen_state = on_screen.pending->state_before;
    on_screen.pending.reset();
}

void placePending() {
    if (on_screen.pending == nullptr) return;
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
