#pragma once

#include <functional>
#include <vector>

/// The waits of the code under test, which all pass through pselect(2) when they are sleeps, and
/// else through ppoll(2), in the hands of the test that makes one of these. There can be only one
/// at a time. What is called may do what a signal handler would do at that place, or throw.
class Waits {
  public:
    Waits();
    ~Waits();
    Waits(const Waits&) = delete;
    Waits& operator=(const Waits&) = delete;

    /// The sleeps so far, each in seconds. A sleep lasts a thousandth of its time only.
    std::vector<int> sleeps;

    /// Called in every sleep, once it is noted.
    std::function<void()> inSleep;

    /// Called when a key is waited for on standard input. If it types none the wait is interrupted,
    /// as by a signal, so that a key loop comes to wait anew.
    std::function<void()> atKey;

    /// Called before another descriptor is waited for.
    std::function<void()> atSocket;
};
