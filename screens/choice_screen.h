#pragma once

#include <string>
#include <vector>

#include "screens/screen.h"

class ChoiceList;

/// What one screen with check boxes has different from the next: a question, and below it a list of
/// things to tick and the buttons "Next" and "Back".
struct ChoiceScreenPlan {
    const char* title;
    int cols;             ///< width of the frame
    int rows_above_list;  ///< between the frame's top and the list, less the question's lines
    int next_col;         ///< column of the "Next" button
    void (*next)();
    void (*back)();
};

/// Focus numbers of every screen with check boxes.
enum ChoiceScreenFocus { focus_choices, focus_choice_next, focus_choice_back };

/// Builds such a screen, on show. `checked` are the flags to start from, one per entry. Returns the
/// list, which the screen owns.
ChoiceList* create_choice_screen(Screen& screen, const ChoiceScreenPlan& plan, const char* question,
                                 const std::vector<std::string>& entries,
                                 const unsigned char* checked);

/// Copies the check marks of `list` to `flags`, which must have room for all of them; leaves it
/// alone where the list is empty.
void store_choices(const ChoiceList& list, unsigned char* flags);
