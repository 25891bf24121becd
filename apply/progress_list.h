#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ui/button.h"
#include "ui/label.h"

/// The list of steps that the apply sequence shows in its pending box, one line each. It keeps all
/// its entries while the program runs, so a later run of the sequence shows the whole history; the
/// box shows the newest eight.

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

/// Adds a line for the step `key`, "TEXT ... ", and shows it; a text longer than 45 characters is
/// cut and ended with "..". Does nothing when the step has a line already. The pending box must be
/// open.
void progress_add(const char* key, const char* text);

/// Appends " ... DONE" to the line of the step `key`, once, and shows it. Does nothing for a step
/// that has no line.
void progress_done(const char* key);

/// Shows the lines on top of the pending box, which must be open, or takes them off the screen.
void progress_show_all();
void progress_hide_all();

/// Puts the lines that are shown, and the "OK" button, in their places after the box has moved.
void progress_place_all();

/// Shows an "OK" button below the lines and waits until it is pressed.
void progress_wait_for_ok();
