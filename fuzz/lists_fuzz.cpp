// Whatever keys a list gets, its bar and its check marks are the model's and are what it shows.

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "fuzz/fuzz_input.h"
#include "fuzz/require.h"
#include "fuzz/window_text.h"
#include "ui/list.h"

namespace {

constexpr int normal_pair = 2;
constexpr int selected_pair = 1;

// The entries, and what is known of them.
struct ListModel {
    std::vector<std::string> entries;
    std::vector<unsigned char> checked = std::vector<unsigned char>(max_choices);
    int bar = 0;

    int count() const { return static_cast<int>(entries.size()); }

    void moveBar(int key) {
        if (key == KEY_DOWN)
            bar = std::max(0, std::min(bar + 1, count() - 1));
        else if (key == KEY_UP)
            bar = std::max(0, bar - 1);
    }
};

std::vector<std::string> take_entries(FuzzInput& input) {
    std::vector<std::string> entries(static_cast<std::size_t>(input.takeNumber(0, 110)));
    for (std::string& entry : entries)
        entry = input.takePrintable(static_cast<std::size_t>(input.takeNumber(0, 20)));
    return entries;
}

std::vector<const char*> pointers_to(const std::vector<std::string>& entries) {
    std::vector<const char*> pointers;
    pointers.reserve(entries.size());
    for (const std::string& entry : entries)
        pointers.push_back(entry.c_str());
    return pointers;
}

// The keys that a list knows come as often as all others together.
int take_key(FuzzInput& input) {
    static const int known[] = {KEY_DOWN, KEY_UP, ' ', '\n'};
    const int key = input.takeNumber(0, 255);
    return key < 128 ? known[key % 4] : KEY_MIN + key;
}

void require_row(WINDOW* window, int row, const std::string& text, bool under_bar) {
    require_equal(row_text(window, row), text, "the row is the model's");
    if (text.empty())
        return;
    const chtype look = mvwinch(window, row, 0) & A_ATTRIBUTES;
    require(((look & A_BOLD) != 0) == under_bar, "the bar is where the model has it");
    require(PAIR_NUMBER(look) == (under_bar ? selected_pair : normal_pair), "its colours");
}

// The entry filled up to the longest one.
std::string filled(const ListModel& model, std::size_t index) {
    std::size_t longest = 0;
    for (const std::string& entry : model.entries)
        longest = std::max(longest, entry.size());
    return model.entries[index] + std::string(longest - model.entries[index].size(), ' ');
}

void require_shown(const List& list, const ListModel& model) {
    require(list.getSelected() == model.bar, "the selected entry is the model's");
    for (int i = 0; i < model.count(); ++i) {
        const bool under_bar = i == model.bar;
        require_row(list.getCursesWindow(), i,
                    (under_bar ? "$ " : "  ") + filled(model, static_cast<std::size_t>(i)),
                    under_bar);
    }
}

void require_shown(const ChoiceList& list, const ListModel& model) {
    int count = 0;
    const std::unique_ptr<unsigned char, FreeHeap> flags(list.getChecked(&count));
    require(count == model.count(), "there are as many check marks as entries");
    require(std::equal(flags.get(), flags.get() + count, model.checked.begin()),
            "the check marks are the model's");
    for (int i = 0; i < model.count(); ++i) {
        const auto index = static_cast<std::size_t>(i);
        require_row(list.getCursesWindow(), i,
                    (model.checked[index] != 0 ? "[x] " : "[ ] ") + filled(model, index),
                    i == model.bar);
    }
}

void use_list(FuzzInput& input, ListModel model) {
    const std::vector<const char*> items = pointers_to(model.entries);
    List list(nullptr, model.count(), items.data(), 1, 1, normal_pair, selected_pair);
    list.draw();
    while (!input.isEmpty()) {
        const int key = take_key(input);
        if (key == '\n') {
            const int index = input.takeNumber(-1, 112);
            list.setSelected(index);
            list.draw();
            model.bar = index >= 0 && index < model.count() ? index : model.bar;
        }
        list.onKey(key);
        model.moveBar(key);
    }
    require_shown(list, model);
}

void use_choice_list(FuzzInput& input, ListModel model) {
    const std::vector<const char*> items = pointers_to(model.entries);
    for (std::size_t i = 0; i < model.checked.size(); ++i)
        model.checked[i] = i % 3 == 0;
    std::vector<unsigned char> checked = model.checked;
    checked.resize(std::max(checked.size(), items.size()));
    ChoiceList list(nullptr, model.count(), items.data(), checked.data(), 1, 1, normal_pair,
                    selected_pair);
    list.draw();
    model.entries.resize(std::min(model.entries.size(), model.checked.size()));
    while (!input.isEmpty()) {
        const int key = take_key(input);
        list.onKey(key);
        model.moveBar(key);
        if (key == ' ' || key == '\n')
            model.checked[static_cast<std::size_t>(model.bar)] ^= 1U;
    }
    require_shown(list, model);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    need_curses();
    FuzzInput input(data, size);
    const bool with_boxes = input.takeNumber(0, 1) == 1;
    ListModel model{take_entries(input)};
    if (with_boxes)
        use_choice_list(input, model);
    else
        use_list(input, model);
    return 0;
}
