#include "ui/list.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "ui/keys.h"

ListBase::ListBase(Window* parent, int count, const char* const* texts, int row, int col,
                   int normal_pair, int selected_pair, int marker_width)
    : count(count),
      items(texts, texts + count),
      normalPair(normal_pair),
      selectedPair(selected_pair) {
    for (const std::string& item : items)
        maxLength = std::max(maxLength, static_cast<int>(item.size()));
    this->parent = parent;
    setPosition(row, col);
    // A height of 0 would reach down to the bottom of the terminal.
    setSize(std::max(count, 1), marker_width + maxLength);
    create();
    keypad(cursesWindow, TRUE);
}

int ListBase::onKey(int key) {
    const int step = key == KEY_DOWN ? 1 : key == KEY_UP ? -1 : 0;
    const int target = std::clamp(selected + step, 0, std::max(count - 1, 0));
    if (std::exchange(selected, target) != target) draw();
    return key;
}

void ListBase::drawEntry(int index, const char* marker) {
    const bool is_selected = index == selected;
    const attr_t look = is_selected ? COLOR_PAIR(selectedPair) | A_BOLD : COLOR_PAIR(normalPair);
    wattron(cursesWindow, look);
    mvwprintw(cursesWindow, index, 0, "%s%-*s", marker, maxLength,
              items[static_cast<size_t>(index)].c_str());
    // The others' pair stays on: every later entry and every later draw starts from it.
    if (is_selected) wattroff(cursesWindow, look);
}

void List::setSelected(int index) {
    if (index >= 0 && index < count) selected = index;
}

void List::draw() {
    for (int i = 0; i < count; ++i) drawEntry(i, i == selected ? "$ " : "  ");
}

ChoiceList::ChoiceList(Window* parent, int count, const char* const* items,
                       const unsigned char* checked, int row, int col, int normal_pair,
                       int selected_pair)
    : ListBase(parent, std::min(count, max_choices), items, row, col, normal_pair, selected_pair,
               4) {
    if (checked != nullptr) std::copy(checked, checked + this->count, this->checked);
}

unsigned char* ChoiceList::getChecked(int* flag_count) const {
    auto* flags = static_cast<unsigned char*>(std::malloc(sizeof(checked)));
    std::copy(checked, checked + count, flags);
    *flag_count = count;
    return flags;
}

int ChoiceList::onKey(int key) {
    if (!is_press(key)) return ListBase::onKey(key);
    checked[selected] ^= 1U;
    draw();
    return key;
}

void ChoiceList::draw() {
    curs_set(0);
    Window::draw();
    for (int i = 0; i < count; ++i) drawEntry(i, checked[i] != 0 ? "[x] " : "[ ] ");
    wmove(cursesWindow, selected, maxLength + 2);
}
