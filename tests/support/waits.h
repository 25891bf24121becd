#pragma once

#include <deque>
#include <functional>
#include <vector>

/// Takes over the waits of the code under test: sleeps, by pselect(2), and waits for a descriptor,
/// by ppoll(2). There can be only one at a time. What is called may do what a signal handler would
/// do at that place, or throw.
class Waits {
  public:
    Waits();
    ~Waits();
    Waits(const Waits&) = delete;
    Waits& operator=(const Waits&) = delete;

    /// The sleeps so far, each in seconds. A sleep lasts a thousandth of its time only.
    std::vector<int> sleeps;

    /// Called in every sleep, after it has been noted.
    std::function<void()> inSleep;

    /// Called when a key is waited for on standard input. If it types none the wait is interrupted,
    /// as by a signal, so that a key loop comes to wait anew.
    std::function<void()> atKey;

    /// Called before another descriptor is waited for.
    std::function<void()> atSocket;
};

/// Runs pieces of a test while the code under test waits for a key, each at a wait of its own;
/// after the last one it waits for real. A piece may look at the screen, draw, and type the key;
/// one that types nothing leaves the wait to the next piece. A piece that never got its wait fails
/// the test.
class KeyWaits : public Waits {
  public:
    ~KeyWaits();

    /// Adds a piece; one that runs may add further ones.
    KeyWaits& then(std::function<void()> piece);

  private:
    void runNext();

    std::deque<std::function<void()>> pieces;
};
