#pragma once

#include "ui/window.h"

/// One line of text, as wide as the text, with an optional prefix in another colour.
class Label : public Window {
  public:
    /// Keeps a copy of `text`.
    Label(Window* parent, int row, int col, const char* text);

    /// Draws the first `length` characters in colour pair `pair`; a pair below 0 draws all of the
    /// text in the label's own colours.
    void setHighlight(int pair, int length);

    /// Marks the label of the input field that has the keyboard: all of it but its trailing colon.
    void setFocused(bool focused) override;

    void draw() override;

  private:
    HeapText text;
    int highlightPair = -1;
    int highlightLength = 0;
};
