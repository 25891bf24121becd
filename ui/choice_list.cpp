#include "ui/choice_list.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "ui/keys.h"
#include "ui/list_entries.h"

ChoiceList::ChoiceList(Window* parent, int count, const char* const* items,
                       const unsigned char* checked, int row, int col, int normalPair,
                       int selectedPair)
    : normalPair(normalPair),
      selectedPair(selectedPair),
      items(copy_entries(items, std::min(count, max_choices))),
      count(std::min(count, max_choices)) {
    constexpr int box_width = 4;
    this->parent = parent;
    if (checked != nullptr)
        std::copy(checked, checked + this->count, this->checked);
    maxLength = longest_entry(this->items);
    setPosition(row, col);
    // A height of 0 would reach down to the bottom of the terminal.
    setSize(std::max(this->count, 1), maxLength + box_width);
    create();
    keypad(cursesWindow, TRUE);
}

unsigned char* ChoiceList::getChecked(int* flagCount) const {
    auto* flags = static_cast<unsigned char*>(std::malloc(sizeof(checked)));
    std::memcpy(flags, checked, static_cast<size_t>(count));
    *flagCount = count;
    return flags;
}

void ChoiceList::placeCursor() {
    wmove(cursesWindow, cursor, maxLength + 1);
}

int ChoiceList::onKey(int key) {
    if (key == key_space || key == key_enter) {
        checked[cursor] ^= 1U;
        draw();
    } else if (move_list_bar(cursor, count, key)) {
        draw();
    }
    return key;
}

void ChoiceList::draw() {
    curs_set(0);
    Window::draw();
    for (int i = 0; i < count; ++i)
        drawEntry(i);
    wmove(cursesWindow, cursor, maxLength + 2);
}

void ChoiceList::drawEntry(int index) {
    const std::string& text = items[static_cast<size_t>(index)];
    const char* box = checked[index] != 0 ? "[x] " : "[ ] ";
    if (index == cursor) {
        wattron(cursesWindow, COLOR_PAIR(selectedPair) | A_BOLD);
        draw_list_entry(cursesWindow, index, box, text, maxLength);
        wattroff(cursesWindow, COLOR_PAIR(selectedPair) | A_BOLD);
    } else {
        // The pair stays on: every later entry and every later draw starts from it.
        wattron(cursesWindow, COLOR_PAIR(normalPair));
        draw_list_entry(cursesWindow, index, box, text, maxLength);
    }
}
