#include "ui/list.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "ui/keys.h"

ListEntries::ListEntries(const char* const* texts, int count, int normal_pair, int selected_pair)
    : normalPair(normal_pair),
      selectedPair(selected_pair),
      items(texts, texts + count),
      count(count) {
    for (const std::string& item : items)
        maxLength = std::max(maxLength, static_cast<int>(item.size()));
}

bool ListEntries::moveBar(int key) {
    const int step = key == KEY_DOWN ? 1 : key == KEY_UP ? -1 : 0;
    const int target = std::clamp(selected + step, 0, std::max(count - 1, 0));
    return std::exchange(selected, target) != target;
}

void ListEntries::draw(WINDOW* window, int index, const char* marker) const {
    const bool is_selected = index == selected;
    const attr_t look = is_selected ? COLOR_PAIR(selectedPair) | A_BOLD : COLOR_PAIR(normalPair);
    wattron(window, look);
    mvwprintw(window, index, 0, "%s%-*s", marker, maxLength,
              items[static_cast<size_t>(index)].c_str());
    // The others' pair stays on: every later entry and every later draw starts from it.
    if (is_selected) wattroff(window, look);
}

List::List(Window* parent, int count, const char* const* items, int row, int col, int normal_pair,
           int selected_pair)
    : entries(items, count, normal_pair, selected_pair) {
    constexpr int marker_width = 2;
    this->parent = parent;
    setPosition(row, col);
    setSize(count, entries.maxLength + marker_width);
    create();
    keypad(cursesWindow, TRUE);
}

void List::setSelected(int index) {
    if (index >= 0 && index < entries.count) entries.selected = index;
}

void List::placeCursor() { wmove(cursesWindow, entries.selected, entries.maxLength + 1); }

int List::onKey(int key) {
    if (entries.moveBar(key)) draw();
    return key;
}

void List::draw() {
    for (int i = 0; i < entries.count; ++i)
        entries.draw(cursesWindow, i, i == entries.selected ? "$ " : "  ");
}

ChoiceList::ChoiceList(Window* parent, int count, const char* const* items,
                       const unsigned char* checked, int row, int col, int normal_pair,
                       int selected_pair)
    : entries(items, std::min(count, max_choices), normal_pair, selected_pair) {
    constexpr int box_width = 4;
    this->parent = parent;
    if (checked != nullptr) std::copy(checked, checked + entries.count, this->checked);
    setPosition(row, col);
    // A height of 0 would reach down to the bottom of the terminal.
    setSize(std::max(entries.count, 1), entries.maxLength + box_width);
    create();
    keypad(cursesWindow, TRUE);
}

unsigned char* ChoiceList::getChecked(int* count) const {
    auto* flags = static_cast<unsigned char*>(std::malloc(sizeof(checked)));
    *count = entries.count;
    std::copy(checked, checked + *count, flags);
    return flags;
}

void ChoiceList::placeCursor() { wmove(cursesWindow, entries.selected, entries.maxLength + 1); }

int ChoiceList::onKey(int key) {
    if (key == key_space || key == key_enter)
        checked[entries.selected] ^= 1U;
    else if (!entries.moveBar(key))
        return key;
    draw();
    return key;
}

void ChoiceList::draw() {
    curs_set(0);
    Window::draw();
    for (int i = 0; i < entries.count; ++i)
        entries.draw(cursesWindow, i, checked[i] != 0 ? "[x] " : "[ ] ");
    wmove(cursesWindow, entries.selected, entries.maxLength + 2);
}
