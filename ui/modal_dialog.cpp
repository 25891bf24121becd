#include "ui/modal_dialog.h"

#include "ui/button.h"
#include "ui/terminal/colours.h"
#include "ui/format_label.h"
#include "ui/keys.h"
#include "ui/line_breaker.h"
#include "ui/main_window.h"
#include "ui/terminal/terminal.h"
#include "wizard/base/screen_size.h"
#include "wizard/base/screen_state.h"

namespace {

// Rows of the frame besides the message's: title, margins and buttons.
constexpr int rows_around_message = 9;
constexpr int button_height = 3;

ModalDialog* open_dialog = nullptr;

}  // namespace

ModalDialog* ModalDialog::open() {
    return open_dialog;
}

ModalDialog::ModalDialog(int state, const char* text, const char* title, int width,
                         std::initializer_list<DialogButton> dialogButtons)
    : stateBefore(screen_state),
      rows(countLines(text, width - 2, break_between_words) + rows_around_message),
      cols(width) {
    screen_state = state;
    open_dialog = this;
    frame =
        new Window(main_window, centred(screen_rows, rows), centred(screen_cols, cols), rows, cols);
    frame->create();
    wattron(frame->getCursesWindow(), A_BOLD);
    frame->setTitle(title, pair_screen);
    frame->setColors(pair_screen, pair_screen, 1);
    message = new FormatLabel(text, 3, 1, frame, cols - 2, break_between_words);
    message->setColors(pair_screen, pair_screen, 1);
    for (const DialogButton& button : dialogButtons)
        addButton(button, message->getLineCount() + 4);
    buttons.front()->setFocused(true);
    draw();
}

ModalDialog::~ModalDialog() {
    for (Button* button : buttons)
        delete button;
    delete message;
    delete frame;
    open_dialog = nullptr;
    screen_state = stateBefore;
}

void ModalDialog::addButton(const DialogButton& button, int row) {
    buttons.push_back(new Button(frame, row, button.col, button_height, button.width,
                                 button.caption, pair_button));
}

int ModalDialog::run() {
    for (;;) {
        const int key = read_key(*frame);
        if (is_press(key))
            return static_cast<int>(focus);
        if (key == key_tab)
            setFocus((focus + 1) % buttons.size());
    }
}

void ModalDialog::setFocus(size_t index) {
    buttons[focus]->setFocused(false);
    buttons[index]->setFocused(true);
    buttons[focus]->draw();
    buttons[index]->draw();
    focus = index;
    show_frame();
}

void ModalDialog::place() {
    frame->move(centred(screen_rows, rows), centred(screen_cols, cols));
    message->move(message->getRow(), message->getCol());
    for (Button* button : buttons)
        button->move(button->getRow(), button->getCol());
    draw();
}

void ModalDialog::draw() {
    for (Button* button : buttons)
        button->draw();
    frame->draw();
    message->draw();
    curs_set(0);
    show_frame();
}
