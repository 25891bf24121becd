#pragma once

#include <curses.h>

#include <cstdio>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "tests/support/descriptor.h"
#include "tests/support/emulator.h"
#include "tests/support/pty.h"
#include "tests/support/screen_image.h"

/// Real curses on a terminal of its own, for unit tests of code that draws and reads keys in this
/// process. Make one at the start of a test (a member of the fixture); there can be only one at a
/// time, but as many one after the other as you like.
///
/// It leaves curses as the wizard's start-up does: the standard screen with its colour pairs
/// (1 white on black, 2 white on blue, 3 black on red), cbreak, noecho and keypad. The terminal is
/// also the standard input while the object lives, as in the program. Where the terminal has no
/// colours (vt220) there are no pairs. The signal handlers are those from before:
/// curses' own are taken out again. LINES and COLUMNS leave the environment, as they would override
/// the terminal's size. What cannot be set up throws.
///
/// Delete the panels that a test made before the terminal goes. A panel that is forgotten is
/// reported by the leak checker.
class CursesTerminal {
  public:
    /// `term` names an entry of terminfo; `locale` decides whether curses may write UTF-8.
    explicit CursesTerminal(int rows = 24, int cols = 80,
                            const std::string& term = "xterm-256color",
                            const std::string& locale = "C.UTF-8");
    ~CursesTerminal();
    CursesTerminal(const CursesTerminal&) = delete;
    CursesTerminal& operator=(const CursesTerminal&) = delete;

    /// Types ahead: wgetch() reads the bytes, also if it does not wait. A terminal keeps 4095 bytes
    /// until they are read; more than that throws in the end. Any thread may type. The
    /// terminal driver keeps the characters by which it acts itself (^C, ^S, ^V ...).
    void type(const std::string& bytes);

    void press(Key key);

    /// What the terminal shows after all that curses has written.
    ScreenImage image();

    /// Everything that curses has written.
    std::string outputBytes();

    /// Whether the terminal shows the alternate screen, that is, curses has not ended.
    bool alternateScreen();

    TerminalModes modes() const { return pty.modes(); }

    /// Changes the terminal's size. No signal comes: the code under test is told by the test.
    void resize(int rows, int cols);

  private:
    /// Reads what is written while the object lives, so that code under test in this process can
    /// write as much as it likes. The thread lets no signal in: those that a test raises reach the
    /// thread that runs the test.
    class Reader {
      public:
        explicit Reader(CursesTerminal& terminal);
        ~Reader();
        Reader(const Reader&) = delete;
        Reader& operator=(const Reader&) = delete;

      private:
        Pipe stop;
        std::thread thread;
    };

    void readUntil(const Descriptor& stop);
    std::unique_lock<std::mutex> lockAndAbsorb();
    void startCurses(const std::string& term);

    std::string localeBefore;
    Descriptor inputBefore;
    Pty pty;
    std::mutex mutex;
    Emulator emulator;
    std::string output;
    Reader reader;
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream;
    SCREEN* screen = nullptr;
};
