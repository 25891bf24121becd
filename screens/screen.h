#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ui/window.h"

class Button;
class ChoiceList;
class Label;
class List;
class TextField;

/// One thing on a screen that can have the keyboard.
struct Control {
    int focus;       ///< the screen's focus number while it has
    Window* widget;  ///< keys are read from its curses window
    Label* label = nullptr;
    TextField* field = nullptr;
    Button* button = nullptr;
    bool enter_moves_on = false;  ///< Enter does what TAB does

    void (*take_key)(Window* widget, int key) = nullptr;  ///< every other key
    void (*left)() = nullptr;     ///< after TAB or Enter has moved on from it
    void (*pressed)() = nullptr;  ///< a button: on Enter or space
};

/// A widget on a screen's frame.
struct ScreenWidget {
    std::unique_ptr<Window> window;
    int only_in_state;  ///< the one ScreenState in which it shows, or `in_every_state`
};

constexpr int in_every_state = -1;

/// A question screen: a titled frame in the middle of the terminal and the widgets on it. What is
/// common to all screens is done by the functions below; a screen itself is its widgets, the order
/// of its controls and what its buttons do.
struct Screen {
    int state;  ///< the ScreenState whose focus number is the screen's

    std::unique_ptr<Window> frame = nullptr;  ///< null while the screen is not built
    int centring_rows = 0;  ///< the height by which the frame is centred, not always its own
    int rows = 0;
    int cols = 0;
    std::vector<ScreenWidget> widgets = {};  ///< all that stands on the frame
    std::vector<Control> controls = {};      ///< in TAB order
    void (*draw_extra)() = nullptr;          ///< draws on the frame what is no widget
};

/// The texts of `entries`, as the lists take them; valid as long as those are.
std::vector<const char*> text_pointers(const std::vector<std::string>& entries);

/// Puts a widget on the frame; use screen_add().
void screen_adopt(Screen& screen, Window* widget, int only_in_state);

/// Creates the frame of `screen`, `rows` by `cols`, in the place where a frame of `centring_rows`
/// would be in the middle of the terminal.
void screen_open(Screen& screen, int rows, int cols, int centring_rows, const char* title);

/// Puts a widget made with `new`, in the wizard's colours, on the frame, which it must have as its
/// parent. The screen owns it. Returns the widget.
template <class Widget>
Widget* screen_add(Screen& screen, Widget* widget, int only_in_state = in_every_state) {
    screen_adopt(screen, widget, only_in_state);
    return widget;
}

/// Adds a control behind those that `screen` has, in TAB order. A field's label, or null, is
/// highlighted with it; `left`, or null, is called after TAB or Enter has moved on from it.
/// `take_key` gets the keys of a list; a list of check boxes takes them itself.
void add_field_control(Screen& screen, int focus, Label* label, TextField* field,
                       void (*left)() = nullptr);
void add_list_control(Screen& screen, int focus, List* list, void (*take_key)(Window*, int key));
void add_choice_control(Screen& screen, int focus, ChoiceList* list);

/// Adds a button of the usual size, 3 lines by 6 columns, and its control.
void screen_add_button(Screen& screen, int focus, int row, int col, const char* caption,
                       void (*pressed)());

/// Brings the screen to the front, in the middle of the terminal, and draws it with the look of its
/// present focus.
void screen_draw(Screen& screen);

/// Reads keys, moving the focus, until a button has been pressed and has done its work. The screen
/// is then to be drawn again unless `screen_state` names another.
void screen_run(Screen& screen);

/// Takes the screen off the panel stack.
void screen_hide(Screen& screen);

/// After the terminal has been resized: forgets one key, which the resize has produced, and puts
/// the screen into the middle again. Draws it if it is the one on show; any other stays invisible.
/// Does nothing for a screen that is not built.
void screen_redraw(Screen& screen);

/// Deletes the widgets and then the frame; the screen can be built again. Does nothing for a screen
/// that is not built.
void screen_destroy(Screen& screen);

/// Leaves for the screen of `state`, which is shown with the focus on its first control.
void screen_leave(int state);

/// Hides the screen, shows a message with an "OK" button under the title "Error!", and sends the
/// focus to `focus`.
void screen_error(Screen& screen, const char* message, int focus);
