#pragma once

#include <cstddef>
#include <initializer_list>
#include <vector>

class Button;
class FormatLabel;
class Window;

/// A button of a dialog: 3 lines high, standing below the message.
struct DialogButton {
    const char* caption;
    int col;
    int width;
};

/// A titled frame with a message and one or more buttons on top of everything else, which keeps the
/// keyboard until a button is pressed. Only one can be open at a time. While it is,
/// `screen_state` holds the dialog's own value.
class ModalDialog {
  public:
    /// Builds and shows the dialog, `width` columns wide and as high as the message needs. The
    /// first of the buttons has the focus.
    ModalDialog(int state, const char* message, const char* title, int width,
                std::initializer_list<DialogButton> dialogButtons);

    /// Takes the dialog away and puts the former `screen_state` back.
    ~ModalDialog();

    ModalDialog(const ModalDialog&) = delete;
    ModalDialog& operator=(const ModalDialog&) = delete;

    /// Reads keys until Enter or space; TAB moves the focus. Returns the index of the button that
    /// was pressed.
    int run();

    /// Puts the dialog into the middle of the terminal's present size and draws it.
    void place();

    Window* getFrame() const { return frame; }

    /// The dialog that is open, null where none is.
    static ModalDialog* open();

  private:
    void addButton(const DialogButton& button, int row);
    void setFocus(std::size_t index);
    void draw();

    int stateBefore;
    int rows;
    int cols;
    Window* frame;
    FormatLabel* message;
    std::vector<Button*> buttons;
    std::size_t focus = 0;
};
