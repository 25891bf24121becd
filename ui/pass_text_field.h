#pragma once

#include "ui/text_field.h"

/// A line of input that shows one "*" for each character.
class PassTextField : public TextField {
  public:
    using TextField::TextField;

    /// Overwrites the text.
    ~PassTextField() override;

    void draw() override;

    /// As TextField's, but a character that is typed is not followed by a terminator: behind a text
    /// that setText() has made shorter, what stood there before comes back.
    int onKey(int key) override;

    /// Replaces the text; the next draw() counts its characters. Nothing is drawn.
    void setText(const char* text) override;
};
