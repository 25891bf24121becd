#pragma once

#include <deque>
#include <functional>

/// Runs pieces of a test while the code under test waits for a key: the first piece at the first
/// wait, the next one at the next. A piece runs where a signal handler would, so it may do what one
/// does; it should type something, unless a further piece is to have the next wait. A piece that
/// never got its wait fails the test. There can be only one object at a time.
class KeyWaits {
  public:
    KeyWaits();
    ~KeyWaits();
    KeyWaits(const KeyWaits&) = delete;
    KeyWaits& operator=(const KeyWaits&) = delete;

    /// Adds a piece; one that runs may add further ones.
    void then(std::function<void()> piece);

  private:
    void runNext();

    std::deque<std::function<void()>> pieces;
};
