#include "ui/label.h"

#include <algorithm>
#include <cstring>

#include "ui/terminal/colours.h"

Label::Label(Window* parent, int row, int col, const char* text)
    : Window(parent, row, col, 1, static_cast<int>(std::strlen(text))), text(strdup(text)) {
    create();
}

void Label::setHighlight(int pair, int length) {
    highlightPair = pair;
    highlightLength = length;
}

void Label::setFocused(bool focused) {
    const int without_colon = static_cast<int>(std::strlen(text.get())) - 1;
    setHighlight(focused ? pair_focus : pair_screen, without_colon);
}

void Label::draw() {
    Window::draw();
    if (highlightPair < 0) {
        mvwprintw(cursesWindow, 0, 0, "%s", text.get());
        return;
    }
    const int length = static_cast<int>(std::strlen(text.get()));
    const int prefix = std::clamp(highlightLength, 0, length);
    wattron(cursesWindow, COLOR_PAIR(highlightPair));
    mvwprintw(cursesWindow, 0, 0, "%.*s", prefix, text.get());
    wattroff(cursesWindow, COLOR_PAIR(highlightPair));
    wattron(cursesWindow, COLOR_PAIR(backPair));
    mvwprintw(cursesWindow, 0, prefix, "%s", text.get() + prefix);
}
