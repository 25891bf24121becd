#pragma once

#include <string>

#include "ui/window.h"

/// One line of text, as wide as the text, with or without a prefix in another colour.
class Label : public Window {
  public:
    Label(Window* parent, int row, int col, const char* text);

    /// Draws the first `length` characters in colour pair `pair`; a pair below 0 draws all of the
    /// text in the label's own colours.
    void setHighlight(int pair, int length);

    /// Marks the label of the input field that has the keyboard: all of it but its trailing colon.
    void setFocused(bool focused) override;

    void draw() override;

  private:
    std::string text;
    int highlightPair = -1;
    int highlightLength = 0;
};

/// A block of text, broken into lines of the label's width and as high as they need.
class FormatLabel : public Window {
  public:
    /// `mode` is a LineBreakMode.
    FormatLabel(const char* text, int row, int col, Window* parent, int width, int mode);

    int getLineCount() const { return lineCount; }

    /// What does not fit into the lines is cut at the bottom.
    void draw() override;

  private:
    std::string text;
    int lineCount;
    int mode;
};
