#include "screens/screen.h"

#include "ui/button.h"
#include "ui/choice_list.h"
#include "ui/keys.h"
#include "ui/label.h"
#include "ui/list.h"
#include "ui/main_window.h"
#include "ui/message_dialogs.h"
#include "ui/terminal/colours.h"
#include "ui/terminal/terminal.h"
#include "ui/text_field.h"
#include "wizard/base/screen_state.h"

namespace {

// The states that share a screen share its focus number too.
bool is_on_show(const Screen& screen) {
    return screen_state < screen_count &&
           &screen_focus(screen_state) == &screen_focus(screen.state);
}

Control& focused_control(Screen& screen) {
    for (Control& control : screen.controls) {
        if (control.focus == screen_focus(screen.state))
            return control;
    }
    return screen.controls.front();
}

Control& control_after(Screen& screen, const Control& control) {
    const auto index = static_cast<size_t>(&control - screen.controls.data());
    return screen.controls[(index + 1) % screen.controls.size()];
}

void set_look(Control& control, bool has_focus) {
    if (control.label != nullptr)
        control.label->setFocused(has_focus);
    if (control.button != nullptr)
        control.button->setFocused(has_focus);
}

// The cursor stands in the field that has the keyboard, and nowhere else.
void set_cursor(const Control& control) {
    if (control.field == nullptr) {
        curs_set(0);
        return;
    }
    control.field->show();
    control.field->placeCursor();
    curs_set(1);
}

bool is_shown(const ScreenWidget& widget) {
    return widget.only_in_state == in_every_state || widget.only_in_state == screen_state;
}

void draw_widgets(Screen& screen) {
    for (Control& control : screen.controls)
        set_look(control, &control == &focused_control(screen));
    screen.frame->draw();
    if (screen.draw_extra != nullptr)
        screen.draw_extra();
    for (const ScreenWidget& widget : screen.widgets) {
        if (is_shown(widget))
            widget.window->draw();
    }
    set_cursor(focused_control(screen));
    show_frame();
}

void place(Screen& screen) {
    screen.frame->move(centred(screen_rows, screen.centring_rows),
                       centred(screen_cols, screen.cols));
    for (const ScreenWidget& widget : screen.widgets)
        widget.window->move(widget.window->getRow(), widget.window->getCol());
}

void move_on(Screen& screen, Control& from) {
    Control& to = control_after(screen, from);
    screen_focus(screen.state) = to.focus;
    if (from.left != nullptr)
        from.left();
    draw_widgets(screen);
}

void key_to_field(Window* widget, int key) {
    static_cast<TextField*>(widget)->onKey(key);
}

void key_to_choices(Window* widget, int key) {
    static_cast<ChoiceList*>(widget)->onKey(key);
}

}  // namespace

std::vector<const char*> text_pointers(const std::vector<std::string>& entries) {
    std::vector<const char*> texts;
    for (const std::string& entry : entries)
        texts.push_back(entry.c_str());
    return texts;
}

void screen_adopt(Screen& screen, Window* widget, int only_in_state) {
    widget->setColors(pair_screen, pair_screen, 1);
    screen.widgets.push_back({std::unique_ptr<Window>(widget), only_in_state});
}

void screen_open(Screen& screen, int rows, int cols, int centring_rows, const char* title) {
    screen.centring_rows = centring_rows;
    screen.cols = cols;
    screen.frame = std::make_unique<Window>(main_window, centred(screen_rows, centring_rows),
                                            centred(screen_cols, cols), rows, cols);
    screen.frame->setTitle(title, pair_screen);
    screen.frame->setColors(pair_screen, pair_screen, 1);
    screen.frame->create();
    wattron(screen.frame->getCursesWindow(), A_BOLD);
}

void add_field_control(Screen& screen, int focus, Label* label, TextField* field, void (*left)()) {
    Control control{focus, field};
    control.label = label;
    control.field = field;
    control.enter_moves_on = true;
    control.take_key = key_to_field;
    control.left = left;
    screen.controls.push_back(control);
}

void add_list_control(Screen& screen, int focus, List* list, void (*take_key)(Window*, int key)) {
    Control control{focus, list};
    control.enter_moves_on = true;
    control.take_key = take_key;
    screen.controls.push_back(control);
}

void add_choice_control(Screen& screen, int focus, ChoiceList* list) {
    list->setColors(pair_screen, pair_screen, 0);
    Control control{focus, list};
    control.take_key = key_to_choices;
    screen.controls.push_back(control);
}

void screen_add_button(Screen& screen, int focus, int row, int col, const char* caption,
                       void (*pressed)()) {
    constexpr int button_rows = 3;
    constexpr int button_cols = 6;
    auto* button = screen_add(screen, new Button(screen.frame.get(), row, col, button_rows,
                                                 button_cols, caption, pair_button));
    Control control{focus, button};
    control.button = button;
    control.pressed = pressed;
    screen.controls.push_back(control);
}

void screen_draw(Screen& screen) {
    place(screen);
    screen.frame->show();
    for (const ScreenWidget& widget : screen.widgets) {
        if (is_shown(widget))
            widget.window->show();
    }
    draw_widgets(screen);
}

void screen_run(Screen& screen) {
    for (;;) {
        Control& control = focused_control(screen);
        const int key = read_key(*control.widget);
        if (key == key_tab || (key == key_enter && control.enter_moves_on)) {
            move_on(screen, control);
        } else if (control.take_key != nullptr) {
            control.take_key(control.widget, key);
        } else if (is_press(key)) {
            control.pressed();
            return;
        }
    }
}

void screen_hide(Screen& screen) {
    for (const ScreenWidget& widget : screen.widgets)
        widget.window->hide();
    screen.frame->hide();
}

void screen_redraw(Screen& screen) {
    if (screen.frame == nullptr)
        return;
    drain_key(screen.frame->getCursesWindow(), false);
    place(screen);
    if (is_on_show(screen))
        draw_widgets(screen);
}

void screen_destroy(Screen& screen) {
    screen.controls.clear();
    screen.widgets.clear();
    screen.frame.reset();
}

void screen_leave(int state) {
    screen_state = state;
    screen_focus(state) = 0;
}

void screen_error(Screen& screen, const char* message, int focus) {
    screen_hide(screen);
    showMessage(message, "Error!");
    screen_focus(screen.state) = focus;
}
