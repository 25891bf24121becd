#include "ui/text_field.h"

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

void TextField::draw() {
    Window::draw();
    scroll = firstShown();
    mvwprintw(cursesWindow, textRow, textCol, "%*s", visibleWidth + 1, "");
    mvwaddstr(cursesWindow, textRow, textCol, buffer.c_str() + scroll);
}

int TextField::onKey(int key) {
    if (edit(key, '\0')) buffer[static_cast<size_t>(length)] = '\0';
    return key;
}

void TextField::setText(const char* text) {
    if (text == nullptr) return;
    const size_t size = std::strlen(text) + 1;
    buffer.replace(0, size, text, size);
    length = static_cast<int>(size) - 1;
}

bool TextField::edit(int key, char mask) {
    const bool is_printable = key >= 0 && key <= 255 && std::isprint(key) != 0;
    const bool appends = is_printable && length < maxLength;
    if (appends) {
        buffer[static_cast<size_t>(length++)] = static_cast<char>(key);
        echo(length > visibleWidth ? firstShown() : length - 1, mask);
    } else if ((key == 127 || key == 8 || key == KEY_BACKSPACE) && length > 0) {
        buffer[static_cast<size_t>(--length)] = '\0';
        if (length < visibleWidth) mvwaddch(cursesWindow, textRow, textCol + length, ' ');
        echo(length < visibleWidth ? length : firstShown(), mask);
    }
    return appends;
}

// Writes the characters from number `from` on where the field shows them.
void TextField::echo(int from, char mask) {
    wmove(cursesWindow, textRow, textCol + from - firstShown());
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
    const int length_drawn = length;
    TextField::setText(text);
    length = length_drawn;
}
