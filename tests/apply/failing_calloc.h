#pragma once

/// While it lives, there is no memory to be had from calloc(3) for the project's code.
class FailingCalloc {
  public:
    FailingCalloc();
    ~FailingCalloc();
    FailingCalloc(const FailingCalloc&) = delete;
    FailingCalloc& operator=(const FailingCalloc&) = delete;
};
