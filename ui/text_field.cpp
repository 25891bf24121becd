#include "ui/text_field.h"

#include <algorithm>
#include <cctype>
#include <cstring>

#include "ui/label.h"
#include "wizard/system/secret.h"

TextField::TextField(Window* parent, int row, int col, int max_length, int visible_width,
                     int height)
    : Window(parent, row, col, height, visible_width + 1),
      visibleWidth(visible_width),
      buffer(static_cast<size_t>(max_length) + 1, '\0'),
      maxLength(max_length) {
    create();
    keypad(cursesWindow, TRUE);
}

char* TextField::getText() const { return strdup(buffer.c_str()); }

void TextField::setFocused(bool focused) {
    if (label != nullptr) label->setFocused(focused);
}

void TextField::placeCursor() {
    wmove(cursesWindow, textRow, textCol + std::min(length, visibleWidth));
}

void TextField::draw() {
    Window::draw();
    scroll = std::max(0, length - visibleWidth);
    mvwprintw(cursesWindow, textRow, textCol, "%*s", visibleWidth + 1, "");
    mvwprintw(cursesWindow, textRow, textCol, "%s", buffer.c_str() + scroll);
}

int TextField::onKey(int key) {
    if (edit(key, '\0')) buffer[static_cast<size_t>(length)] = '\0';
    return key;
}

void TextField::setText(const char* text) {
    if (text == nullptr) return;
    keepText(text);
    length = static_cast<int>(std::strlen(text));
}

bool TextField::edit(int key, char mask) {
    const bool is_printable = key >= 0 && key <= 255 && std::isprint(key) != 0;
    const bool appends = is_printable && length < maxLength;
    if (appends)
        append(static_cast<char>(key), mask);
    else if ((key == 127 || key == 8 || key == KEY_BACKSPACE) && length > 0)
        removeLast(mask);
    return appends;
}

void TextField::keepText(const char* text) {
    const size_t size = std::strlen(text) + 1;
    buffer.resize(std::max(buffer.size(), size));
    std::copy(text, text + size, buffer.begin());
}

void TextField::append(char character, char mask) {
    buffer[static_cast<size_t>(length++)] = character;
    if (length <= visibleWidth)
        echo(length - 1, length - 1, mask);
    else
        echo(length - visibleWidth, 0, mask);
}

void TextField::removeLast(char mask) {
    buffer[static_cast<size_t>(--length)] = '\0';
    if (length >= visibleWidth) {
        echo(length - visibleWidth, 0, mask);
    } else {
        mvwaddch(cursesWindow, textRow, textCol + length, ' ');
        wmove(cursesWindow, textRow, textCol + length);
    }
}

// Writes the characters from number `from` on, the first of them at `column` of the field.
void TextField::echo(int from, int column, char mask) {
    wmove(cursesWindow, textRow, textCol + column);
    for (int i = from; i < length; ++i) {
        const char shown = mask != '\0' ? mask : buffer[static_cast<size_t>(i)];
        waddch(cursesWindow, static_cast<unsigned char>(shown));
    }
}

PassTextField::~PassTextField() { wipe(buffer.data(), buffer.size()); }

void PassTextField::draw() {
    Window::draw();
    length = static_cast<int>(std::strlen(buffer.c_str()));
    wmove(cursesWindow, textRow, textCol);
    for (int i = 0; i < std::min(visibleWidth, length); ++i) waddch(cursesWindow, '*');
}

int PassTextField::onKey(int key) {
    if (edit(key, '*') && length <= visibleWidth) draw();
    return key;
}

void PassTextField::setText(const char* text) {
    if (text != nullptr) keepText(text);
}
