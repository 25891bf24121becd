#pragma once

#include <gtest/gtest.h>

#include <string>

#include "tests/e2e/wizard_run.h"

/// Expects a terminal as it was before the wizard came: modes, visible cursor, normal screen, plain
/// text, nothing typed ahead. Wait for the wizard's end, or until it has stopped, first.
testing::AssertionResult leaves_terminal_usable(WizardRun& wizard);

/// Waits for the end. Expects this status, nothing printed on the normal screen but this, and the
/// terminal usable.
testing::AssertionResult ends_with(WizardRun& wizard, const ExitStatus& status,
                                   const std::string& printed);

/// Waits for the end. Expects what Ctrl-C has to leave: status 1, the text, the terminal usable.
testing::AssertionResult is_aborted(WizardRun& wizard);
