#include "ui/list_entries.h"

#include <algorithm>
#include <cstring>

std::vector<std::string> copy_entries(const char* const* items, int count) {
    return {items, items + count};
}

int longest_entry(const std::vector<std::string>& entries) {
    size_t longest = 0;
    for (const std::string& entry : entries)
        longest = std::max(longest, entry.size());
    return static_cast<int>(longest);
}

void draw_list_entry(WINDOW* window, int row, const char* marker, const std::string& text,
                     int length) {
    mvwprintw(window, row, 0, "%s", marker);
    mvwprintw(window, row, static_cast<int>(std::strlen(marker)), "%-*s", length, text.c_str());
}

bool move_list_bar(int& bar, int count, int key) {
    if (key == KEY_DOWN && bar < count - 1)
        ++bar;
    else if (key == KEY_UP && bar > 0)
        --bar;
    else
        return false;
    return true;
}
