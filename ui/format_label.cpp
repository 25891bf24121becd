#include "ui/format_label.h"

#include <cstring>

#include "ui/line_breaker.h"

FormatLabel::FormatLabel(const char* text, int row, int col, Window* parent, int width, int mode)
    : Window(parent, row, col, countLines(text, width, mode), width),
      text(strdup(text)),
      lineCount(height),
      mode(mode) {
    create();
}

void FormatLabel::draw() {
    Window::draw();
    if (width < 1)
        return;
    if (mode == break_anywhere)
        drawAnywhere();
    else if (mode == break_between_words)
        drawBetweenWords();
}

void FormatLabel::drawAnywhere() {
    for (int i = 0; text.get()[i] != '\0'; ++i) {
        if (i % width == 0)
            wmove(cursesWindow, i / width, 0);
        putCharacter(text.get()[i]);
    }
}

void FormatLabel::drawBetweenWords() {
    const std::vector<std::string> words = split_words(text.get());
    if (words.size() == 1) {
        drawAnywhere();
        return;
    }
    for (const TextRun& run : break_words(words, width).runs) {
        wmove(cursesWindow, run.line, run.col);
        for (const char character : run.text)
            putCharacter(character);
    }
}

void FormatLabel::putCharacter(char character) {
    waddch(cursesWindow, static_cast<unsigned char>(character) | COLOR_PAIR(forePair));
}
