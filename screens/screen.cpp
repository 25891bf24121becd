#include "screens/screen.h"

#include <algorithm>

#include "screens/screen_table.h"
#include "ui/button.h"
#include "ui/keys.h"
#include "ui/main_window.h"
#include "ui/message_dialogs.h"
#include "ui/terminal/terminal.h"

Screen::Screen(int state, int rows, int cols, int centring_rows)
    : state(state),
      frameCols(cols),
      frame(main_window, centred(screen_rows, centring_rows), centred(screen_cols, cols), rows,
            cols),
      centringRows(centring_rows) {
    frame.setTitle(screen_table[state].title, pair_screen);
    frame.setColors(pair_screen, pair_screen, 1);
    frame.create();
}

void Screen::addButton(int focus, int row, int col, const char* caption) {
    auto& button = add<Button>(&frame, row, col, 3, 6, caption, pair_button);
    addControl({focus, &button, Enter::presses});
}

Control& Screen::controlOf(int focus) {
    const auto found =
        std::find_if(controls.begin(), controls.end(),
                     [focus](const Control& control) { return control.focus == focus; });
    return found != controls.end() ? *found : controls.front();
}

void Screen::place() {
    frame.move(centred(screen_rows, centringRows), centred(screen_cols, frameCols));
    for (const auto& widget : widgets) widget->follow();
}

void Screen::drawWidgets() {
    Window& current = *focused().widget;
    for (const Control& control : controls) control.widget->setFocused(control.widget == &current);
    frame.draw();
    for (const auto& widget : widgets) widget->draw();
    if (current.showsCursor()) {
        current.show();
        current.placeCursor();
    }
    curs_set(current.showsCursor() ? 1 : 0);
    show_frame();
}

void Screen::draw() {
    prepare();
    place();
    frame.show();
    for (const auto& widget : widgets) widget->show();
    drawWidgets();
}

void Screen::moveOn() {
    const auto index = static_cast<size_t>(&focused() - controls.data());
    screen_focus(state) = controls[(index + 1) % controls.size()].focus;
    prepare();
    drawWidgets();
}

WizardEnd Screen::run() {
    for (;;) {
        const Control& control = focused();
        const int key = read_key(*control.widget);
        if (key == key_tab || (key == key_enter && control.enter == Enter::moves_on))
            moveOn();
        else if (control.enter != Enter::presses)
            takeKey(control, key);
        else if (is_press(key))
            return press(control.focus);
    }
}

void Screen::hide() {
    for (const auto& widget : widgets) widget->hide();
    frame.hide();
}

void Screen::redraw() {
    drain_key(frame.getCursesWindow(), false);
    place();
    if (screen_state == state) drawWidgets();
}

WizardEnd Screen::goOn() { return leave(next_listener_state(state)); }

WizardEnd Screen::goBack() { return leave(previous_listener_state(state)); }

WizardEnd Screen::leave(int to) {
    screen_state = to;
    if (state != state_smtp) screen_focus(to) = 0;
    return WizardEnd::not_yet;
}

WizardEnd Screen::refuse(const char* message, int focus) {
    hide();
    showMessage(message, "Error!");
    screen_focus(state) = focus;
    return WizardEnd::not_yet;
}
