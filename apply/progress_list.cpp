#include "apply/progress_list.h"

#include <curses.h>

#include <memory>
#include <string>
#include <vector>

#include "ui/button.h"
#include "ui/keys.h"
#include "ui/label.h"
#include "ui/pending_box.h"
#include "ui/terminal/colours.h"
#include "ui/terminal/terminal.h"

namespace {

constexpr size_t most_lines = 8;
constexpr size_t text_limit = 45;
constexpr int first_row = 5;
constexpr int label_col = 2;

struct ProgressEntry {
    std::string key;
    std::string text;
    std::unique_ptr<Label> label = nullptr;  // null while the line is not on the screen
    bool done = false;
};

using ProgressList = std::vector<ProgressEntry>;

ProgressList entries;
std::unique_ptr<Button> ok_button;

void make_label(ProgressEntry& entry, int row) {
    entry.label = std::make_unique<Label>(pending_frame(), row, label_col, entry.text.c_str());
    entry.label->setColors(pair_screen, pair_screen, 1);
    entry.label->draw();
}

// Gives the newest entries a label each, from the first row on, and takes the others' away.
void make_labels() {
    const size_t scrolled = entries.size() > most_lines ? entries.size() - most_lines : 0;
    for (size_t i = 0; i < entries.size(); ++i) {
        if (i < scrolled)
            entries[i].label.reset();
        else
            make_label(entries[i], first_row + static_cast<int>(i - scrolled));
    }
}

ProgressEntry* find_entry(const char* key) {
    for (ProgressEntry& entry : entries) {
        if (entry.key == key)
            return &entry;
    }
    return nullptr;
}

void place(Window* window) {
    if (window == nullptr)
        return;
    window->move(window->getRow(), window->getCol());
    window->draw();
}

}  // namespace

void progress_add(const char* key, const char* text) {
    if (find_entry(key) != nullptr)
        return;
    std::string line = text;
    if (line.size() > text_limit)
        line = line.substr(0, text_limit) + "..";
    entries.push_back({key, line + " ... ", nullptr});
    make_labels();
    show_frame();
}

void progress_done(const char* key) {
    ProgressEntry* entry = find_entry(key);
    if (entry == nullptr || entry->done)
        return;
    entry->done = true;
    entry->text += " ... DONE";
    if (entry->label != nullptr)
        make_label(*entry, entry->label->getRow());
    show_frame();
}

void progress_show_all() {
    make_labels();
    show_frame();
}

void progress_hide_all() {
    for (ProgressEntry& entry : entries)
        entry.label.reset();
    ok_button.reset();
}

void progress_place_all() {
    for (const ProgressEntry& entry : entries)
        place(entry.label.get());
    place(ok_button.get());
}

void progress_wait_for_ok() {
    constexpr int row = 14;
    constexpr int col = 27;
    curs_set(0);
    ok_button = std::make_unique<Button>(pending_frame(), row, col, 3, 6, "OK", pair_button);
    ok_button->setFocused(true);
    ok_button->draw();
    show_frame();
    while (!is_press(read_key(*ok_button)))
        continue;
    ok_button.reset();
}
