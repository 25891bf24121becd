#pragma once

#include <deque>
#include <functional>

/// Runs pieces of a test while the code under test waits, for a key or for the network: the first
/// piece at the first wait, the next one at the next. A piece runs as if the wait had called it: it
/// may look at the screen, draw, and type the key that is waited for. One that types nothing leaves
/// the wait to the next piece.
///
/// They come in by SIGWINCH, as a resize does, so the code must wait as the key loops do; and only
/// where there is nothing to read yet. A piece that never got its wait fails the test. One object
/// at a time.
class AtWaits {
  public:
    AtWaits();
    ~AtWaits();
    AtWaits(const AtWaits&) = delete;
    AtWaits& operator=(const AtWaits&) = delete;

    AtWaits& then(std::function<void()> piece);

  private:
    static void runNext(int signal_number);

    std::deque<std::function<void()>> pieces;
};
