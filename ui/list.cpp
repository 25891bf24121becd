#include "ui/list.h"

#include "ui/list_entries.h"

List::List(Window* parent, int count, const char* const* items, int row, int col, int normalPair,
           int selectedPair)
    : normalPair(normalPair),
      selectedPair(selectedPair),
      items(copy_entries(items, count)),
      count(count) {
    constexpr int marker_width = 2;
    this->parent = parent;
    maxLength = longest_entry(this->items);
    setPosition(row, col);
    setSize(count, maxLength + marker_width);
    create();
    keypad(cursesWindow, TRUE);
}

void List::setSelected(int index) {
    if (index >= 0 && index < count)
        selected = index;
}

void List::placeCursor() {
    wmove(cursesWindow, selected, maxLength + 1);
}

int List::onKey(int key) {
    if (move_list_bar(selected, count, key))
        draw();
    return key;
}

void List::draw() {
    for (int i = 0; i < count; ++i)
        drawEntry(i);
}

void List::drawEntry(int index) {
    const std::string& text = items[static_cast<size_t>(index)];
    if (index == selected) {
        wattron(cursesWindow, COLOR_PAIR(selectedPair) | A_BOLD);
        draw_list_entry(cursesWindow, index, "$ ", text, maxLength);
        wattroff(cursesWindow, COLOR_PAIR(selectedPair) | A_BOLD);
    } else {
        // The pair stays on: the list has no colours of its own to go back to.
        wattron(cursesWindow, COLOR_PAIR(normalPair));
        draw_list_entry(cursesWindow, index, "  ", text, maxLength);
    }
}
