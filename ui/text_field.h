#pragma once

#include <algorithm>
#include <string>

#include "ui/window.h"

class Label;

/// A line of input. Characters are appended and removed at its end only; a text longer than the
/// field shows its tail.
class TextField : public Window {
  public:
    /// A field that accepts at most `max_length` characters and shows `visible_width` of them, with
    /// one column more for the cursor after the last.
    TextField(Window* parent, int row, int col, int max_length, int visible_width, int height);

    /// A malloc'ed copy of the text; the caller frees it.
    char* getText() const;

    /// Gives the field a label, which is marked while the field has the keyboard. It is not owned
    /// and must outlive the last setFocused().
    void setLabel(Label* new_label) { label = new_label; }

    void setFocused(bool focused) override;

    /// Puts the cursor after the last character shown.
    void placeCursor() override {
        wmove(cursesWindow, textRow, textCol + std::min(length, visibleWidth));
    }

    bool showsCursor() const override { return true; }

    void draw() override;

    /// Printable characters are appended while there is room; backspace (as a byte or as a key
    /// code) and delete (127) remove the last one.
    int onKey(int key) override;

    /// Replaces the text, whatever its length, without drawing; null is ignored.
    virtual void setText(const char* text);

  protected:
    /// Does what onKey() tells, with `mask` shown for each character if it is not NUL. Returns true
    /// if a character was appended, which is then not followed by a terminator yet.
    bool edit(int key, char mask);

    int visibleWidth;
    std::string buffer;  ///< the text, its terminator, and what has stood after it before
    int length = 0;
    int textRow = 0;  ///< where the text begins
    int textCol = 0;
    int maxLength;
    int scroll = 0;  ///< the first character that draw() has shown

  private:
    void echo(int from, char mask);
    int firstShown() const { return std::max(0, length - visibleWidth); }

    Label* label = nullptr;
};

/// A line of input that shows one "*" for each character.
class PassTextField : public TextField {
  public:
    using TextField::TextField;

    /// Overwrites the text.
    ~PassTextField() override;

    void draw() override;

    /// As TextField's, but a character that is typed is not followed by a terminator: after a text
    /// that setText() has made shorter, what stood there before comes back.
    int onKey(int key) override;

    /// Replaces the text without drawing; the next draw() counts its characters.
    void setText(const char* text) override;
};
