#pragma once

#include <vector>

#include "ui/window.h"

class Label;

/// A line of input. Characters are appended and removed at its end only; a text longer than the
/// field shows its tail.
class TextField : public Window {
  public:
    /// A field that accepts at most `maxLength` characters and shows `visibleWidth` of them, with
    /// one column more for the cursor behind the last.
    TextField(Window* parent, int row, int col, int maxLength, int visibleWidth, int height);

    /// A malloc'ed copy of the text; the caller frees it.
    char* getText() const;

    /// Makes `newLabel`, or no label for null, the one that is marked while the field has the
    /// keyboard. It is not owned and must outlive the field's last setFocused().
    void setLabel(Label* newLabel) { label = newLabel; }

    /// Marks the field's label or takes the mark away.
    void setFocused(bool focused) override;

    bool showsCursor() const override { return true; }

    /// Puts the cursor behind the last character shown.
    void placeCursor() override;

    void draw() override;

    /// Takes a key of wgetch(3X): printable characters are appended while there is room, backspace
    /// removes the last one; the change is written to the curses window. Returns the key.
    int onKey(int key) override;

    /// Replaces the text, with no regard to the longest accepted; null is ignored. Nothing is
    /// drawn.
    virtual void setText(const char* text);

  protected:
    /// What a character looks like on the screen.
    enum Echo { plain, hidden };

    bool isFull() const { return length >= maxLength; }
    void append(int key, Echo echo);
    void removeLast(Echo echo);

    /// Copies `text` to the buffer, which grows to hold it; what stands behind stays.
    void keepText(const char* text);

    int visibleWidth;
    std::vector<char> buffer;
    int length = 0;
    int textRow = 0;
    int textCol = 0;
    int maxLength;
    int scroll = 0;
    Label* label = nullptr;

  private:
    void showTail(Echo echo);
    void putCharacter(int index, Echo echo);
};

/// True for a key that removes a character: backspace or delete, as a byte or as a key code.
bool is_backspace(int key);

/// True for a key that is a printable character of one byte.
bool is_printable(int key);
