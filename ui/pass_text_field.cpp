#include "ui/pass_text_field.h"

#include <algorithm>
#include <cstring>

#include "wizard/system/secret.h"

PassTextField::~PassTextField() {
    wipe(buffer.data(), buffer.size());
}

void PassTextField::draw() {
    Window::draw();
    length = static_cast<int>(std::strlen(buffer.data()));
    wmove(cursesWindow, textRow, textCol);
    for (int i = 0; i < std::min(visibleWidth, length); ++i)
        waddch(cursesWindow, '*');
}

int PassTextField::onKey(int key) {
    if (is_backspace(key)) {
        removeLast(hidden);
    } else if (is_printable(key) && !isFull()) {
        append(key, hidden);
        if (length <= visibleWidth)
            draw();
    }
    return key;
}

void PassTextField::setText(const char* text) {
    if (text != nullptr)
        keepText(text);
}
