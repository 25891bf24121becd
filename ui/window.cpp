#include "ui/window.h"

#include <cstring>

Window::Window(Window* parent, int row, int col, int height, int width)
    : parent(parent), row(row), col(col), height(height), width(width) {}

Window::Window(WINDOW* window, Window* parent)
    : cursesWindow(window),
      parent(parent),
      row(getbegy(window)),
      col(getbegx(window)),
      height(getmaxy(window)),
      width(getmaxx(window)) {}

Window::~Window() {
    // A window that create() did not make has no panel and stays its owner's: curses still uses
    // the standard screen after the root frame is gone.
    if (panel != nullptr) releaseCursesWindow();
}

void Window::create() {
    cursesWindow = newCursesWindow();
    panel = new_panel(cursesWindow);
}

void Window::setTitle(const char* text, int pair) {
    hasTitle = 1;
    title = text;
    titlePair = pair;
}

void Window::setColors(int back, int fore, int bold_text) {
    backPair = back;
    forePair = fore;
    bold = bold_text;
}

void Window::move(int new_row, int new_col) {
    setPosition(new_row, new_col);
    const bool has_its_size = getHeight() == height && getWidth() == width;
    if (!has_its_size || move_panel(panel, screenRow(), screenCol()) == ERR) replaceCursesWindow();
}

void Window::releaseCursesWindow() {
    if (panel != nullptr) del_panel(panel);
    panel = nullptr;
    delwin(cursesWindow);
    cursesWindow = nullptr;
}

void Window::draw() {
    wbkgd(cursesWindow, COLOR_PAIR(backPair) | (bold == 1 ? A_BOLD : 0));
    wattron(cursesWindow, COLOR_PAIR(forePair));
    if (hasTitle) drawTitleFrame();
    if (boxed) box(cursesWindow, 0, 0);
}

void Window::touch() {
    wtouchln(cursesWindow, 0, height, 1);
    if (parent != nullptr) parent->touch();
}

void Window::drawTitleFrame() {
    const attr_t attributes = COLOR_PAIR(titlePair) | A_BOLD;
    const int columns = getWidth();
    wborder(cursesWindow, ACS_VLINE | attributes, ACS_VLINE | attributes, ACS_HLINE | attributes,
            ACS_HLINE | attributes, ACS_ULCORNER | attributes, ACS_URCORNER | attributes,
            ACS_LLCORNER | attributes, ACS_LRCORNER | attributes);
    mvwaddch(cursesWindow, 2, 0, ACS_LTEE);
    mvwhline(cursesWindow, 2, 1, ACS_HLINE, columns - 2);
    mvwaddch(cursesWindow, 2, columns - 1, ACS_RTEE);
    printCentered(1, 0, columns, title.c_str(), attributes);
}

void Window::printCentered(int line, int first_col, int columns, const char* text,
                           attr_t attributes) {
    constexpr int default_columns = 80;
    if (columns == 0) columns = default_columns;
    if (line == 0) line = getcury(cursesWindow);
    const int length = static_cast<int>(std::strlen(text));
    wattron(cursesWindow, attributes);
    mvwprintw(cursesWindow, line, first_col + 1, "%*s", columns - 2, "");
    // A text that is longer than the place for it is left out, not cut.
    if (length <= columns)
        mvwprintw(cursesWindow, line, first_col + (columns - length) / 2, "%s", text);
    wattroff(cursesWindow, attributes);
}

void Window::replaceCursesWindow() {
    WINDOW* replacement = panel != nullptr ? newCursesWindow() : nullptr;
    if (replacement == nullptr) return;
    attr_t attributes = 0;
    short pair = 0;
    wattr_get(cursesWindow, &attributes, &pair, nullptr);
    wattr_set(replacement, attributes, pair, nullptr);
    keypad(replacement, is_keypad(cursesWindow));
    nodelay(replacement, is_nodelay(cursesWindow));
    replace_panel(panel, replacement);
    delwin(cursesWindow);
    cursesWindow = replacement;
}
