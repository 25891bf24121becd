#pragma once

#include <sys/types.h>

#include "tests/e2e/wizard_run.h"

/// Whether a process is stopped.
bool has_stopped(pid_t process);

/// Sends SIGTSTP, as Ctrl-Z does, and waits until the wizard has stopped or ended.
void stop(WizardRun& wizard);

void wait_until_stopped(WizardRun& wizard);

/// Sends SIGCONT.
void go_on(WizardRun& wizard);
