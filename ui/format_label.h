#pragma once

#include "ui/window.h"

/// A block of text, broken into lines of the label's width and as high as they need.
class FormatLabel : public Window {
  public:
    /// Keeps a copy of `text`; `mode` is a LineBreakMode.
    FormatLabel(const char* text, int row, int col, Window* parent, int width, int mode);

    int getLineCount() const { return lineCount; }

    /// What does not fit into the lines is cut at the bottom.
    void draw() override;

  private:
    void drawAnywhere();
    void drawBetweenWords();
    void putCharacter(char character);

    HeapText text;
    int lineCount;
    int mode;
};
