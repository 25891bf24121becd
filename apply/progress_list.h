#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ui/button.h"
#include "ui/label.h"

/// The list of steps that the apply sequence shows in its pending box, a line each. It keeps its
/// entries while the program runs, so that a later run shows them too; the box has room for the
/// newest eight. It must be open for what shows lines.

struct ProgressEntry {
    std::string key;
    std::string text;
    std::unique_ptr<Label> label;  // null while the line is not on the screen
    bool done;
};

using ProgressList = std::vector<ProgressEntry>;

/// What there is to show of this run. A test makes it anew: `progress = {}`.
struct Progress {
    ProgressList entries;
    std::unique_ptr<Button> ok_button;  // null while it is not on the screen
};

inline Progress progress;

/// Shows a line for the step `key`, "TEXT ... ", unless it has one already. A text longer than 45
/// characters is cut and ended with "..".
void progress_add(const char* key, const char* text);

/// Appends " ... DONE" to the line of the step `key`, if it has one, once.
void progress_done(const char* key);

/// Shows the lines on top of the box, or takes them off the screen.
void progress_show_all();
void progress_hide_all();

/// Puts what is shown in its place after the box has moved.
void progress_place_all();

/// Shows an "OK" button below the lines until it is pressed.
void progress_wait_for_ok();
