#pragma once

#include <string>

#include "ui/window.h"

/// A coloured block with a caption in its middle.
class Button : public Window {
  public:
    /// `pair` is the colour pair of the block. A caption longer than the button is wide is not
    /// drawn.
    Button(Window* parent, int row, int col, int height, int width, const char* caption, int pair);

    /// Colour pair of the caption, below 0 for the block's own, and whether it is bold (0 or 1).
    void setLook(int new_caption_pair, int new_emphasis);

    /// The look of a button that has the keyboard, or of one that has not.
    void setFocused(bool focused) override;

    /// Puts the cursor right after the caption.
    void placeCursor() override;

    void draw() override;

  private:
    int captionRow;
    int captionCol;
    std::string caption;
    int buttonPair;
    int captionPair = -1;
    int emphasis = 0;
};
