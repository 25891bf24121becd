#pragma once

/// While it lives, the process cannot have some child process that the code under test asks for.
class FailingFork {
  public:
    /// The `number`th fork(2) from now on fails, 1 for the next one; all others work.
    explicit FailingFork(int number);
    ~FailingFork();
    FailingFork(const FailingFork&) = delete;
    FailingFork& operator=(const FailingFork&) = delete;
};
