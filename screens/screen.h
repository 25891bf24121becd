#pragma once

#include <cstring>
#include <memory>
#include <utility>
#include <vector>

#include "ui/label.h"
#include "ui/terminal/colours.h"
#include "ui/window.h"
#include "wizard/base/screen_state.h"

/// What Enter does while a control has the keyboard.
enum class Enter { moves_on, goes_to_widget, presses };

/// One thing on a screen that can have the keyboard.
struct Control {
    int focus;  ///< the screen's focus number while it has the keyboard
    Window* widget;
    Enter enter;
};

/// A question screen: a titled frame in the middle of the terminal, and its widgets, which it owns.
/// Each kind of screen derives from this one, adds its widgets when it is constructed, and says
/// what its buttons do. `main_window` must be there.
class Screen {
  public:
    virtual ~Screen() = default;
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    /// Brings the screen to the front, in the middle of the terminal, and draws it.
    void draw();

    /// Reads keys until a button has been pressed and has done its work. Returns whether that was
    /// the wizard's end; if not, `screen_state` names the next screen, which may be this one.
    WizardEnd run();

    /// Takes the screen off the panel stack.
    void hide();

    /// After the terminal has been resized: forgets the key that the resize has produced, puts the
    /// screen into the middle again, and draws it if it is the one on show.
    void redraw();

    Window& getFrame() { return frame; }

  protected:
    /// Creates the frame of the screen of `state`, `rows` by `cols`, at the place where a frame of
    /// `centring_rows` would be in the middle of the terminal.
    Screen(int state, int rows, int cols, int centring_rows);

    /// Makes a widget of `arguments`, which name the frame as its parent, in the wizard's colours.
    template <class Widget, class... Arguments>
    Widget& add(Arguments... arguments) {
        auto widget = std::make_unique<Widget>(arguments...);
        widget->setColors(pair_screen, pair_screen, 1);
        widgets.push_back(std::move(widget));
        return static_cast<Widget&>(*widgets.back());
    }

    /// Adds a label and, right after it, a field for at most `max_length` characters, as a control.
    template <class Field>
    Field& addField(int focus, int row, const char* text, int max_length) {
        constexpr int margin = 2;
        const int col = margin + static_cast<int>(std::strlen(text));
        auto& label = add<Label>(&frame, row, margin, text);
        auto& field = add<Field>(&frame, row, col, max_length, frameCols - 2 * margin - col, 1);
        field.setLabel(&label);
        addControl({focus, &field, Enter::moves_on});
        return field;
    }

    /// Adds a button of 3 lines by 6 columns as a control.
    void addButton(int focus, int row, int col, const char* caption);

    /// Adds a control; TAB goes round in this order.
    void addControl(const Control& control) { controls.push_back(control); }

    /// The control of a focus number; the first one where there is none.
    Control& controlOf(int focus);

    /// Goes to the next or the previous screen of the walk, which will have the focus on its first
    /// control; one that SMTP leads to keeps the focus that it had. The wizard has not ended.
    WizardEnd goOn();
    WizardEnd goBack();

    /// Hides the screen and shows a message under the title "Error!"; then the screen comes again
    /// with the focus on `focus`. The wizard has not ended.
    WizardEnd refuse(const char* message, int focus);

    /// Takes a key that is no key of the screen's.
    virtual void takeKey(const Control& control, int key) { control.widget->onKey(key); }

    const int state;
    const int frameCols;  ///< the frame's width
    Window frame;

  private:
    /// Does the work of the button with that focus number. Returns whether the wizard ends with it.
    virtual WizardEnd press(int button) = 0;

    /// Brings the widgets up to date before the screen is shown and when the focus has moved on.
    virtual void prepare() {}

    Control& focused() { return controlOf(screen_focus(state)); }
    WizardEnd leave(int to);
    void drawWidgets();
    void place();
    void moveOn();

    int centringRows;
    std::vector<std::unique_ptr<Window>> widgets;
    std::vector<Control> controls;
};
