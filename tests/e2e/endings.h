#pragma once

#include <gtest/gtest.h>

#include <string>

#include "tests/e2e/wizard_run.h"

/// Expects a terminal as it was before the wizard came: modes, visible cursor, normal screen, plain
/// text. Wait for the wizard's end, or until it has stopped, first.
testing::AssertionResult gives_terminal_back(WizardRun& wizard);

/// The same, and that nothing typed ahead is left. Type nothing from the wizard's last words on.
testing::AssertionResult leaves_terminal_usable(WizardRun& wizard);

/// Waits for the end. Expects this status, nothing printed on the normal screen but this, and the
/// terminal usable.
testing::AssertionResult ends_with(WizardRun& wizard, const ExitStatus& status,
                                   const std::string& printed);

/// Waits for the end. Expects what Ctrl-C has to leave: status 1, the text, the terminal usable.
testing::AssertionResult is_aborted(WizardRun& wizard);

/// The same of what a terminal of less than 72 columns or 20 lines has to leave: status 0, the
/// text.
testing::AssertionResult is_refused_as_too_small(WizardRun& wizard);
