#include "ui/label.h"

#include <algorithm>

#include "ui/line_breaker.h"
#include "ui/terminal/colours.h"

Label::Label(Window* parent, int row, int col, const char* label)
    : Window(parent, row, col, 1, 0), text(label) {
    width = static_cast<int>(text.size());
    create();
}

void Label::setHighlight(int pair, int length) {
    highlightPair = pair;
    highlightLength = length;
}

void Label::setFocused(bool focused) {
    setHighlight(focused ? pair_focus : pair_screen, width - 1);
}

void Label::draw() {
    Window::draw();
    const int prefix = highlightPair < 0 ? 0 : std::clamp(highlightLength, 0, width);
    if (highlightPair >= 0) {
        wattron(cursesWindow, COLOR_PAIR(highlightPair));
        mvwprintw(cursesWindow, 0, 0, "%.*s", prefix, text.c_str());
        wattroff(cursesWindow, COLOR_PAIR(highlightPair));
        wattron(cursesWindow, COLOR_PAIR(backPair));
    }
    mvwprintw(cursesWindow, 0, prefix, "%s", text.c_str() + prefix);
}

FormatLabel::FormatLabel(const char* text, int row, int col, Window* parent, int width, int mode)
    : Window(parent, row, col, countLines(text, width, mode), width),
      text(text),
      lineCount(height),
      mode(mode) {
    create();
}

void FormatLabel::draw() {
    Window::draw();
    for (const TextRun& run : break_text(text, width, mode).runs) {
        wmove(cursesWindow, run.line, run.col);
        for (const char character : run.text)
            waddch(cursesWindow, static_cast<unsigned char>(character) | COLOR_PAIR(forePair));
    }
}
