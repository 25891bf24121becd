#pragma once

#include <curses.h>

#include <cstdio>
#include <future>
#include <memory>
#include <mutex>
#include <string>

#include "tests/support/descriptor.h"
#include "tests/support/emulator.h"
#include "tests/support/pty.h"
#include "tests/support/screen_image.h"

/// Real curses on a terminal of its own, for unit tests of code that draws and reads keys in this
/// process. Make it the first member of a fixture; there can be only one at a time.
///
/// It leaves curses as the wizard's start-up does, colour pairs included where the terminal has
/// colours, and is the standard input too. The signal handlers stay those from before. LINES and
/// COLUMNS leave the environment. What cannot be set up throws. Delete panels before the terminal
/// goes: the leak checker reports one that is forgotten.
class CursesTerminal {
  public:
    /// `term` names an entry of terminfo; `locale` decides whether curses may write UTF-8.
    explicit CursesTerminal(int rows = 24, int cols = 80,
                            const std::string& term = "xterm-256color",
                            const std::string& locale = "C.UTF-8");
    ~CursesTerminal();

    /// Types ahead, from any thread. Throws when more than 4095 bytes stay unread for patience().
    /// The terminal driver keeps the characters that are meant for it (^C, ^S, ^V ...).
    void type(const std::string& bytes);
    void press(Key key);

    /// What the terminal shows after all that curses has written, and those bytes.
    ScreenImage image();
    std::string outputBytes();

    /// Whether the terminal shows the alternate screen, that is, curses has not ended.
    bool alternateScreen();

    TerminalModes modes() const { return pty.modes(); }

    /// Changes the terminal's size. No signal comes: the code under test is told by the test.
    void resize(int rows, int cols);

  private:
    void startReader();
    void readUntil(const Descriptor& end);
    std::unique_lock<std::mutex> lockAndAbsorb();
    void startCurses(const std::string& term);

    std::string localeBefore;
    Descriptor inputBefore;
    Pty pty;
    std::mutex mutex;
    Emulator emulator;
    std::string output;
    std::future<void> reader;  // whose thread ends when the next member goes
    Descriptor readerGoesOn;
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream;
    SCREEN* screen = nullptr;
};
