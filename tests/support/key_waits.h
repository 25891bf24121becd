#pragma once

#include <deque>
#include <functional>

#include "tests/support/waits.h"

/// Runs pieces of a test while the code under test waits for a key: the first piece at the first
/// wait, the next one at the next; after the last one it waits for real. A piece runs where a
/// signal handler would: it may look at the screen, draw, and type the key that is waited for. One
/// that types nothing leaves the wait to the next piece. A piece that never got its wait fails the
/// test.
class KeyWaits : public Waits {
  public:
    KeyWaits() = default;
    ~KeyWaits();
    KeyWaits(const KeyWaits&) = delete;
    KeyWaits& operator=(const KeyWaits&) = delete;

    /// Adds a piece; one that runs may add further ones.
    KeyWaits& then(std::function<void()> piece);

  private:
    void runNext();

    std::deque<std::function<void()>> pieces;
};
