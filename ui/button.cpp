#include "ui/button.h"

#include <cstring>

#include "ui/terminal/colours.h"

namespace {

// Unsigned, so that a caption that is too long ends up at a column that no window has.
int middle_of(int width, const char* caption) {
    const auto room = static_cast<unsigned>(width) - static_cast<unsigned>(std::strlen(caption));
    return static_cast<int>(room >> 1);
}

}  // namespace

Button::Button(Window* parent, int row, int col, int height, int width, const char* caption,
               int pair)
    : Window(parent, row, col, height, width),
      captionRow((height - 1) / 2),
      captionCol(middle_of(width, caption)),
      caption(strdup(caption)),
      buttonPair(pair) {
    create();
}

void Button::setLook(int newCaptionPair, int newEmphasis) {
    captionPair = newCaptionPair;
    emphasis = newEmphasis;
}

void Button::setFocused(bool focused) {
    if (focused)
        setLook(pair_focus, 1);
    else
        setLook(pair_button, 0);
}

void Button::placeCursor() {
    wmove(cursesWindow, captionRow, captionCol + static_cast<int>(std::strlen(caption.get())));
}

void Button::draw() {
    const attr_t weight = emphasis == 1 ? A_BOLD : A_NORMAL;
    const attr_t colour = captionPair < 0 ? 0 : COLOR_PAIR(captionPair);
    wbkgd(cursesWindow, COLOR_PAIR(buttonPair));
    wattron(cursesWindow, weight | colour);
    mvwprintw(cursesWindow, captionRow, captionCol, "%s", caption.get());
    wattroff(cursesWindow, weight | colour);
}
