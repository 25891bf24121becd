#pragma once

#include <mutex>
#include <string>
#include <thread>

#include "tests/support/descriptor.h"
#include "tests/support/emulator.h"
#include "tests/support/pty.h"

/// Plays the terminal at the screen's side of a pty, in a thread of its own, so that code under
/// test in this process can write as much as it likes.
///
/// The thread lets no signal in: those that a test raises reach the thread that runs the test.
class ScreenReader {
  public:
    /// `pty` must outlive the reader.
    ScreenReader(Pty& pty, int rows, int cols, const std::string& term);
    ~ScreenReader();
    ScreenReader(const ScreenReader&) = delete;
    ScreenReader& operator=(const ScreenReader&) = delete;

    /// What the terminal shows after everything that was written before the call.
    ScreenImage image();

    /// Everything that was written before the call.
    std::string bytes();

    /// Whether the terminal shows the alternate screen after everything that was written.
    bool alternateScreen();

    /// What a key sends in the modes set by everything that was written.
    std::string keyBytes(Key key);

    /// Gives pty and emulator a new size; what was written before is shown in the old one first.
    void resize(int rows, int cols);

  private:
    void readUntilStopped();
    std::unique_lock<std::mutex> lockAndAbsorb();

    Pty& pty;
    std::mutex mutex;
    Emulator emulator;
    std::string output;
    Pipe stop;
    std::thread thread;
};
