#pragma once

#include <string>

#include "ui/window.h"

class Label;

/// A line of input. Characters are appended and removed at its end only; a text longer than the
/// field shows its tail.
class TextField : public Window {
  public:
    /// A field that accepts at most `maxLength` characters and shows `visibleWidth` of them, with
    /// one column more for the cursor after the last.
    TextField(Window* parent, int row, int col, int max_length, int visible_width, int height);

    /// A malloc'ed copy of the text; the caller frees it.
    char* getText() const;

    /// Makes `newLabel`, or no label for null, the one that is marked while the field has the
    /// keyboard. It is not owned and must outlive the field's last setFocused().
    void setLabel(Label* new_label) { label = new_label; }

    /// Marks the field's label or takes the mark away.
    void setFocused(bool focused) override;

    /// Puts the cursor after the last character shown.
    void placeCursor() override;

    bool showsCursor() const override { return true; }

    void draw() override;

    /// Printable characters are appended while there is room; backspace (as a byte or as a key
    /// code) and delete (127) remove the last one.
    int onKey(int key) override;

    /// Replaces the text, with no regard to the longest accepted; null is ignored. Nothing is
    /// drawn.
    virtual void setText(const char* text);

  protected:
    /// Does what onKey() tells, with `mask` shown for each character if it is not NUL. Returns true
    /// if a character was appended, which is then not followed by a terminator yet.
    bool edit(int key, char mask);

    /// Copies `text` to the buffer, which grows to hold it; what stands after it stays.
    void keepText(const char* text);

    int visibleWidth;
    std::string buffer;
    int length = 0;
    int textRow = 0;
    int textCol = 0;
    int maxLength;
    int scroll = 0;

  private:
    void append(char character, char mask);
    void removeLast(char mask);
    void echo(int from, int column, char mask);

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

    /// Replaces the text; the next draw() counts its characters. Nothing is drawn.
    void setText(const char* text) override;
};
