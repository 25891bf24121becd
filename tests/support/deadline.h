#pragma once

#include <chrono>

/// How long a test waits for something before it fails: 30 seconds, times the number in the
/// environment variable TELUMA_TEST_PATIENCE where it is set (a slow or crowded machine).
std::chrono::milliseconds patience();

/// A moment in the future.
class Deadline {
  public:
    explicit Deadline(std::chrono::milliseconds from_now = patience());

    bool passed() const;

    /// Milliseconds that are left, at most `most` and at least 0: a time-out for poll(2).
    int millisecondsLeft(int most) const;

  private:
    std::chrono::steady_clock::time_point end;
};
