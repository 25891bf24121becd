#pragma once

#include <string>
#include <vector>

#include "tests/e2e/wizard_run.h"

/// The lines of steps in the box that is shown while the answers are applied, from the top, without
/// the spaces at their ends. Empty lines below the last are left out. A line that is wider than the
/// box covers its border and is given whole.
std::vector<std::string> progress_lines(const ScreenImage& screen);

/// The line of a step that runs, as progress_lines() gives it, and of one that is done.
std::string running(const std::string& step);
std::string done(const std::string& step);

/// Waits until these lines are in the box, and no other.
void wait_for_progress(WizardRun& wizard, const std::vector<std::string>& lines,
                       const Caller& caller = Caller::here());
