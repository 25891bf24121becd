#include "ui/message_dialogs.h"

#include <algorithm>
#include <cstring>
#include <deque>
#include <initializer_list>
#include <memory>
#include <string>
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

OnScreen on_screen;

namespace {

constexpr int button_width = 6;

// A titled frame in the wizard's colours, which has its own `screen_state` while it is there.
class Box : public Window {
  public:
    Box(int state, int rows, int cols, const char* title)
        : Window(main_window, centred(screen_rows, rows), centred(screen_cols, cols), rows, cols),
          stateBefore(std::exchange(screen_state, state)) {
        setTitle(title, pair_screen);
        setColors(pair_screen, pair_screen, 1);
        create();
        wattron(cursesWindow, A_BOLD);
    }

    ~Box() override { screen_state = stateBefore; }

  private:
    const int stateBefore;
};

// A button of a dialog, standing below the message.
struct DialogButton {
    const char* caption;
    int col;
    int width = button_width;
};

// A box with a message and one or more buttons, the first of which has the focus.
class ModalDialog final : public Box {
  public:
    ModalDialog(int state, const char* text, const char* title, int width,
                std::initializer_list<DialogButton> dialog_buttons)
        : Box(state, countLines(text, width - 2, break_between_words) + rows_around_message, width,
              title),
          message(text, 3, 1, this, width - 2, break_between_words) {
        on_screen.dialog = this;
        message.setColors(pair_screen, pair_screen, 1);
        for (const DialogButton& button : dialog_buttons)
            buttons.emplace_back(this, message.getLineCount() + 4, button.col, 3, button.width,
                                 button.caption, pair_button);
        draw();
    }

    ~ModalDialog() override { on_screen.dialog = nullptr; }

    // Returns the index of the button that was pressed.
    int run() {
        for (;;) {
            const int key = read_key(*this);
            if (is_press(key)) return static_cast<int>(focus);
            if (key != key_tab) continue;
            focus = (focus + 1) % buttons.size();
            draw();
        }
    }

    // Moves to the middle of a terminal that has another size now.
    void follow() override {
        move(centred(screen_rows, height), centred(screen_cols, width));
        message.follow();
        for (Button& button : buttons) button.follow();
    }

    void draw() override {
        for (size_t i = 0; i < buttons.size(); ++i) {
            buttons[i].setFocused(i == focus);
            buttons[i].draw();
        }
        Window::draw();
        message.draw();
        curs_set(0);
        show_frame();
    }

  private:
    static constexpr int rows_around_message = 9;  // title, margins and buttons

    FormatLabel message;
    std::deque<Button> buttons;
    size_t focus = 0;
};

// A box that stays on the screen, `rows` by `cols` where the terminal is wide enough for it.
class PendingBox final : public Box {
  public:
    PendingBox(const char* message, const char* title, int rows, int cols)
        : Box(state_pending, rows, cols, title),
          message(message),
          givenTitle(title),
          givenRows(rows),
          givenCols(cols) {
        keypad(cursesWindow, TRUE);
    }

    // Draws the box where the terminal's present size wants it.
    void draw() override {
        const int length = static_cast<int>(message.size());
        const int room = screen_cols - 4;
        const bool fits = givenCols <= screen_cols;
        setSize(fits ? givenRows : length / (room - 4) + 7, fits ? givenCols : room - 4);
        move(centred(screen_rows, height), fits ? centred(room, width) : 3);
        const int line_length = fits ? length : room - 8;
        for (int at = 0, line = 3; at < length; at += line_length)
            mvwaddnstr(cursesWindow, line++, 2, message.c_str() + at, line_length);
        setTitle(fits ? givenTitle.c_str() : "Error!", pair_screen);
        Window::draw();
    }

  private:
    const std::string message;
    const std::string givenTitle;
    const int givenRows;
    const int givenCols;
};

// As narrow as the message allows, up to a width from which it is broken into lines.
int width_for(const char* message) {
    constexpr size_t widest = 60;
    return static_cast<int>(std::min(std::strlen(message) + 2, widest));
}

void open_box(const char* message, const char* title, int rows, int cols) {
    closePending();
    on_screen.pending = std::make_unique<PendingBox>(message, title, rows, cols);
    placePending();
    curs_set(0);
    show_frame();
}

}  // namespace

void showMessage(const char* message, const char* title) {
    const int width = width_for(message);
    ModalDialog dialog(state_message, message, title, width, {{"OK", (width - button_width) / 2}});
    dialog.run();
}

int askYesNo(const char* message, const char* title) {
    constexpr int width = 62;
    ModalDialog dialog(state_yes_no, message, title, width,
                       {{"No", 3}, {"Yes", width - 3 - button_width}});
    return dialog.run();
}

int askRetryOrBack(const char* message, const char* title, const char* host, int port) {
    const int width = width_for(message);
    const int middle = (width - button_width) / 2;
    const int pressed = ModalDialog(state_retry_back, message, title, width,
                                    {{"Retry", middle + 20, 7}, {"Back", middle - 20}})
                            .run();
    const int back = 1;
    if (pressed == back) return 0;
    return probe_port_visibly(host, port) ? 1 : -1;
}

bool probe_port_visibly(const char* host, int port) {
    showPending("Please wait until the port is being checked!", "Operation pending!");
    const bool is_free = probe_port(host, port) != 0;
    closePending();
    return is_free;
}

void place_dialog() {
    if (on_screen.dialog == nullptr) return;
    on_screen.dialog->follow();
    on_screen.dialog->draw();
}

void showPending(const char* message, const char* title) {
    open_box(message, title, 7, std::max(static_cast<int>(std::strlen(message)) + 4, 8));
}

void showApplyPending(const char* message, const char* title) { open_box(message, title, 18, 60); }

void hidePending() {
    if (on_screen.pending != nullptr) on_screen.pending->hide();
}

void closePending() { on_screen.pending.reset(); }

void placePending() {
    if (on_screen.pending != nullptr) on_screen.pending->draw();
}

Window* pending_frame() { return on_screen.pending.get(); }
