#pragma once

#include "tests/e2e/wizard_run.h"

/// Whether the wizard dies of a signal instead of ending by itself, as by Ctrl-C.
bool is_crash(int signal);

/// A wizard that is about to end.
class DyingWizard : public WizardRun {
  public:
    DyingWizard();

    /// Sends the signal and waits for the end. Expects what the signal has to leave: a status and a
    /// text, a usable terminal and, but for a crash, no private directory.
    void dieOf(int number);

    /// Hangs the terminal up and waits for the end. Expects the status and no private directory.
    void dieOfHangUp();
};

/// Whether a process is stopped.
bool has_stopped(pid_t process);

/// Sends SIGTSTP, as Ctrl-Z does, and waits until the wizard has stopped or ended.
void stop(WizardRun& wizard);

void wait_until_stopped(WizardRun& wizard);
