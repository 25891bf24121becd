#include "ui/text_field.h"

#include <algorithm>
#include <cctype>
#include <cstring>

#include "ui/label.h"

bool is_backspace(int key) {
    return key == 127 || key == 8 || key == KEY_BACKSPACE;
}

bool is_printable(int key) {
    return key >= 0 && key <= 255 && std::isprint(key) != 0;
}

TextField::TextField(Window* parent, int row, int col, int maxLength, int visibleWidth, int height)
    : Window(parent, row, col, height, visibleWidth + 1),
      visibleWidth(visibleWidth),
      buffer(static_cast<size_t>(maxLength) + 1),
      maxLength(maxLength) {
    create();
    keypad(cursesWindow, TRUE);
}

char* TextField::getText() const {
    return strdup(buffer.data());
}

void TextField::setFocused(bool focused) {
    if (label != nullptr)
        label->setFocused(focused);
}

void TextField::placeCursor() {
    wmove(cursesWindow, textRow, textCol + std::min(length, visibleWidth));
}

void TextField::draw() {
    Window::draw();
    scroll = std::max(0, length - visibleWidth);
    mvwprintw(cursesWindow, textRow, textCol, "%*s", visibleWidth + 1, "");
    mvwprintw(cursesWindow, textRow, textCol, "%s", buffer.data() + scroll);
}

int TextField::onKey(int key) {
    if (is_backspace(key)) {
        removeLast(plain);
    } else if (is_printable(key) && !isFull()) {
        append(key, plain);
        buffer[static_cast<size_t>(length)] = '\0';
    }
    return key;
}

void TextField::setText(const char* text) {
    if (text == nullptr)
        return;
    keepText(text);
    length = static_cast<int>(std::strlen(text));
}

void TextField::keepText(const char* text) {
    const size_t size = std::strlen(text) + 1;
    buffer.resize(std::max(buffer.size(), size));
    std::copy(text, text + size, buffer.begin());
}

void TextField::append(int key, Echo echo) {
    const int added = length++;
    buffer[static_cast<size_t>(added)] = static_cast<char>(key);
    if (length <= visibleWidth) {
        wmove(cursesWindow, textRow, textCol + added);
        putCharacter(added, echo);
    } else {
        showTail(echo);
    }
}

void TextField::removeLast(Echo echo) {
    if (length == 0)
        return;
    --length;
    buffer[static_cast<size_t>(length)] = '\0';
    if (length >= visibleWidth) {
        showTail(echo);
    } else {
        wmove(cursesWindow, textRow, textCol + length);
        waddch(cursesWindow, ' ');
        wmove(cursesWindow, textRow, textCol + length);
    }
}

void TextField::showTail(Echo echo) {
    wmove(cursesWindow, textRow, textCol);
    for (int i = length - visibleWidth; i < length; ++i)
        putCharacter(i, echo);
}

void TextField::putCharacter(int index, Echo echo) {
    const char character = echo == hidden ? '*' : buffer[static_cast<size_t>(index)];
    waddch(cursesWindow, static_cast<unsigned char>(character));
}
