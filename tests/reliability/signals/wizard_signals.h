#pragma once

#include <sys/types.h>

#include <csignal>
#include <string>

#include "tests/e2e/wizard_run.h"

/// A signal that ends the wizard.
struct Death {
    std::string name;
    int signal;
    bool is_crash = true;  // the wizard dies of it instead of ending by itself
};

inline const Death sigint{"SIGINT", SIGINT, false};
inline const Death sigterm{"SIGTERM", SIGTERM, false};
inline const Death sighup{"SIGHUP", SIGHUP, false};
inline const Death sigsegv{"SIGSEGV", SIGSEGV};
inline const Death sigquit{"SIGQUIT", SIGQUIT};

/// A wizard that is about to end.
class DyingWizard : public WizardRun {
  public:
    DyingWizard();

    /// Takes away the private directory that a crash has left.
    ~DyingWizard();
    DyingWizard(const DyingWizard&) = delete;
    DyingWizard& operator=(const DyingWizard&) = delete;

    /// Sends the signal and waits for the end. Expects what the signal has to leave: a status and a
    /// text, a usable terminal and, but for a crash, no private directory.
    void dieOf(const Death& death);

    /// Hangs the terminal up and waits for the end. Expects the status and no private directory.
    void dieOfHangUp();

    /// Has the destructor take the private directory away.
    void rememberDirectory();

  private:
    std::string directory;
};

/// Whether a process is stopped.
bool has_stopped(pid_t process);

/// Sends SIGTSTP, as Ctrl-Z does, and waits until the wizard has stopped or ended.
void stop(WizardRun& wizard);

void wait_until_stopped(WizardRun& wizard);

/// Sends SIGCONT.
void go_on(WizardRun& wizard);
