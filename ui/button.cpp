#include "ui/button.h"

#include "ui/terminal/colours.h"

Button::Button(Window* parent, int row, int col, int height, int width, const char* caption,
               int pair)
    : Window(parent, row, col, height, width),
      captionRow((height - 1) / 2),
      caption(caption),
      buttonPair(pair) {
    // Unsigned, so that a caption that is too long ends up at a column that no window has.
    const auto room = static_cast<unsigned>(width) - static_cast<unsigned>(this->caption.size());
    captionCol = static_cast<int>(room >> 1);
    create();
}

void Button::setLook(int new_caption_pair, int new_emphasis) {
    captionPair = new_caption_pair;
    emphasis = new_emphasis;
}

void Button::setFocused(bool focused) {
    setLook(focused ? pair_focus : pair_button, focused ? 1 : 0);
}

void Button::placeCursor() {
    wmove(cursesWindow, captionRow, captionCol + static_cast<int>(caption.size()));
}

void Button::draw() {
    const attr_t weight = emphasis == 1 ? A_BOLD : A_NORMAL;
    const attr_t colour = captionPair < 0 ? 0 : COLOR_PAIR(captionPair);
    wbkgd(cursesWindow, COLOR_PAIR(buttonPair));
    wattron(cursesWindow, weight | colour);
    mvwprintw(cursesWindow, captionRow, captionCol, "%s", caption.c_str());
    wattroff(cursesWindow, weight | colour);
}
