#pragma once

#include <sys/types.h>
#include <unistd.h>

#include <functional>

#include "tests/support/process.h"

/// While it lives, the code under test cannot start one of its child processes.
class FailingFork {
  public:
    /// The `number`th fork(2) from now on fails, 1 for the next one; all others work.
    explicit FailingFork(int number);
    ~FailingFork();
    FailingFork(const FailingFork&) = delete;
    FailingFork& operator=(const FailingFork&) = delete;
};

/// A child process in a process group of its own that waits for the signal that ends it. Killed and
/// reaped when the object goes.
class OtherProcess {
  public:
    /// Of the user `user`; calls `first` before it waits.
    explicit OtherProcess(
        uid_t user = getuid(), const std::function<void()>& first = [] {});
    ~OtherProcess() { end(); }
    OtherProcess(const OtherProcess&) = delete;
    OtherProcess& operator=(const OtherProcess&) = delete;

    pid_t pid() const { return child; }

    /// Ends and reaps it: from then on there is no process of its id.
    void end();

    /// Waits until it has ended.
    ExitStatus waitForEnd();

    bool isRunning() const { return process_running(child); }

  private:
    pid_t child;
};
