#pragma once

#include <gtest/gtest.h>

#include <csignal>
#include <functional>
#include <string>
#include <tuple>

#include "tests/e2e/wizard_run.h"

/// A signal that ends the wizard.
struct Death {
    const char* name;
    int signal;
    bool is_crash;  // the wizard dies of it instead of ending by itself
};

/// SIGTERM and SIGHUP; SIGINT has tests of its own.
inline auto every_request_to_end() {
    return testing::Values(Death{"SIGTERM", SIGTERM, false}, Death{"SIGHUP", SIGHUP, false});
}

/// The signals of a crash, SIGQUIT among them.
inline auto every_crash() {
    return testing::Values(Death{"SIGSEGV", SIGSEGV, true}, Death{"SIGBUS", SIGBUS, true},
                           Death{"SIGILL", SIGILL, true}, Death{"SIGFPE", SIGFPE, true},
                           Death{"SIGABRT", SIGABRT, true}, Death{"SIGQUIT", SIGQUIT, true});
}

/// The other signals that end a program which does nothing about them.
inline auto every_other_death() {
    return testing::Values(Death{"SIGSYS", SIGSYS, true}, Death{"SIGTRAP", SIGTRAP, true},
                           Death{"SIGXCPU", SIGXCPU, true}, Death{"SIGUSR1", SIGUSR1, true},
                           Death{"SIGUSR2", SIGUSR2, true}, Death{"SIGVTALRM", SIGVTALRM, true},
                           Death{"SIGPROF", SIGPROF, true}, Death{"SIGALRM", SIGALRM, true});
}

/// A wizard that is about to end.
class DyingWizard {
  public:
    DyingWizard();

    /// Takes away what a crash has left.
    ~DyingWizard();
    DyingWizard(const DyingWizard&) = delete;
    DyingWizard& operator=(const DyingWizard&) = delete;

    WizardRun& run() { return wizard; }

    /// Sends the signal and waits for the end. Expects what the signal has to leave: a status and a
    /// text, a usable terminal and, but for a crash, no private directory.
    void dieOf(const Death& death);

    /// Hangs the terminal up and waits for the end. Expects the status and no private directory.
    void dieOfHangUp();

    /// Has the destructor take away the private directory of one that ends otherwise.
    void rememberDirectory();

  private:
    WizardRun wizard;
    std::string directory;
};
