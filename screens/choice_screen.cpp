#include "screens/choice_screen.h"

#include <algorithm>

#include "ui/choice_list.h"
#include "ui/format_label.h"
#include "ui/line_breaker.h"
#include "ui/terminal/colours.h"
#include "wizard/base/heap_text.h"

namespace {

// Every screen with check boxes is centred as if it were this high.
constexpr int centring_rows = 15;
constexpr int back_col = 3;

}  // namespace

ChoiceList* create_choice_screen(Screen& screen, const ChoiceScreenPlan& plan, const char* question,
                                 const std::vector<std::string>& entries,
                                 const unsigned char* checked) {
    const int count = static_cast<int>(entries.size());
    const int lines = countLines(question, plan.cols - 2, break_between_words);
    const int list_row = lines + plan.rows_above_list;
    const int button_row = list_row + count + 1;
    screen_open(screen, button_row + 5, plan.cols, centring_rows, plan.title);
    Window* frame = screen.frame.get();
    screen_add(screen, new FormatLabel(question, 3, 1, frame, plan.cols - 2, break_between_words));
    auto* list = screen_add(screen, new ChoiceList(frame, count, text_pointers(entries).data(),
                                                   checked, list_row, 1, pair_screen, pair_focus));
    add_choice_control(screen, focus_choices, list);
    screen_add_button(screen, focus_choice_next, button_row, plan.next_col, "Next", plan.next);
    screen_add_button(screen, focus_choice_back, button_row, back_col, "Back", plan.back);
    return list;
}

void store_choices(const ChoiceList& list, unsigned char* flags) {
    int count = 0;
    const std::unique_ptr<unsigned char, FreeHeap> marks(list.getChecked(&count));
    std::copy(marks.get(), marks.get() + count, flags);
}
