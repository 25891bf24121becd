#include "apply/progress_list.h"

#include <curses.h>

#include <algorithm>

#include "ui/keys.h"
#include "ui/message_dialogs.h"
#include "ui/terminal/colours.h"
#include "ui/terminal/terminal.h"

namespace {

constexpr int most_lines = 8;
constexpr size_t text_limit = 45;
constexpr int first_row = 5;
constexpr int label_col = 2;

void make_label(ProgressEntry& entry, int row) {
    entry.label = std::make_unique<Label>(pending_frame(), row, label_col, entry.text.c_str());
    entry.label->setColors(pair_screen, pair_screen, 1);
    entry.label->draw();
}

ProgressList::iterator find_entry(const char* key) {
    return std::find_if(progress.entries.begin(), progress.entries.end(),
                        [=](const ProgressEntry& entry) { return entry.key == key; });
}

void place(Window* window) {
    if (window == nullptr) return;
    window->follow();
    window->draw();
}

}  // namespace

void progress_add(const char* key, const char* text) {
    if (find_entry(key) != progress.entries.end()) return;
    std::string line = text;
    if (line.size() > text_limit) line = line.substr(0, text_limit) + "..";
    progress.entries.push_back({key, line + " ... ", nullptr, false});
    progress_show_all();
}

void progress_done(const char* key) {
    const auto entry = find_entry(key);
    if (entry == progress.entries.end() || entry->done) return;
    entry->done = true;
    entry->text += " ... DONE";
    if (entry->label != nullptr) make_label(*entry, entry->label->getRow());
    show_frame();
}

void progress_show_all() {
    int row = first_row - std::max(0, static_cast<int>(progress.entries.size()) - most_lines);
    for (ProgressEntry& entry : progress.entries) {
        entry.label.reset();
        if (row >= first_row) make_label(entry, row);
        ++row;
    }
    show_frame();
}

void progress_hide_all() {
    for (ProgressEntry& entry : progress.entries) entry.label.reset();
    progress.ok_button.reset();
}

void progress_place_all() {
    for (const ProgressEntry& entry : progress.entries) place(entry.label.get());
    place(progress.ok_button.get());
}

void progress_wait_for_ok() {
    curs_set(0);
    progress.ok_button = std::make_unique<Button>(pending_frame(), 14, 27, 3, 6, "OK", pair_button);
    progress.ok_button->setFocused(true);
    progress.ok_button->draw();
    show_frame();
    while (!is_press(read_key(*progress.ok_button))) continue;
    progress.ok_button.reset();
}
