#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tests/support/emulator.h"
#include "tests/support/process.h"
#include "tests/support/pty.h"
#include "tests/support/screen_image.h"
#include "tests/support/terminal_session.h"
#include "tests/support/wait_until.h"

/// What a program is run with. TERM and LC_ALL are set from `term` and `locale`, LINES and COLUMNS
/// are taken out; `environment` has the last word.
struct ProgramSetup {
    std::vector<std::string> arguments;  // the program first, found by PATH unless it has a slash
    int rows = 24;
    int cols = 80;
    std::string term = "xterm-256color";
    std::string locale = "C.UTF-8";
    EnvironmentChanges environment = {};
    std::string directory = {};  // where it starts; empty: where the test is
};

/// A program that runs in a terminal, and the person before it: what the terminal shows, typing,
/// resizing, waiting. README.md has an example.
///
/// Each wait looks at the screen whenever something new has come, for at most patience(). One that
/// fails, also because the program has ended meanwhile, ends the test and prints the screen. A
/// program needs several writes for a screen, so wait for what it draws last.
///
/// The program is killed when the object goes. One that cannot be started throws std::system_error.
class TerminalProgram {
  public:
    explicit TerminalProgram(const ProgramSetup& setup);
    ~TerminalProgram();

    using Condition = std::function<bool(const ScreenImage&)>;

    /// Waits until the screen fulfils `condition`; `description` completes "until ...".
    void waitUntil(const Condition& condition, const std::string& description,
                   const Caller& caller = Caller::here());

    /// The same without ending the test: false if it has not come to that.
    bool comesTo(const Condition& condition);

    /// Waits until `text` stands on the screen and returns where; or until it is gone.
    Position waitForText(const std::string& text, const Caller& caller = Caller::here());
    void waitGone(const std::string& text, const Caller& caller = Caller::here());

    /// Waits until the program has ended and everything that it has written is on the screen.
    ExitStatus waitExit(const Caller& caller = Caller::here());

    /// Waits until nothing has been written for a fifth of a second, which proves nothing: for
    /// looking at a screen of which nothing is known yet.
    void waitQuiet();

    void type(const std::string& bytes);
    void press(Key key);

    /// Whether the program has left something unread that was typed.
    bool hasUnreadInput() const { return pty.hasUnreadInput(); }

    /// Gives the terminal a new size, of which the program learns by SIGWINCH.
    void resize(int rows, int cols);

    /// Fills the line to the screen (Pty::fill), until something looks at the screen.
    void fillLine() const { pty.fill(); }

    /// Breaks the connection to the terminal: SIGHUP, then end of file. The screen stays as it was.
    void hangUp();

    /// Sends a signal to the program alone, or to it and its children: the terminal's foreground.
    void signal(int number);
    void signalForeground(int number);

    /// What the terminal shows now, and whether it is the alternate screen.
    ScreenImage image();
    bool alternateScreen();

    /// Every byte that the program has written and that has arrived.
    std::string output();

    /// What the program printed after it left the alternate screen for good, or all of it, as plain
    /// text: without escape sequences, lines ended by "\n".
    std::string printedAfterwards();

    /// The terminal's modes now, and as they were before the program was started.
    TerminalModes modes() const { return pty.modes(); }
    const TerminalModes& modesBefore() const { return modesAtStart; }

    pid_t pid() const { return session.program(); }

    /// The terminal's foreground process group, 0 if there is none.
    int foregroundGroup() const { return pty.foregroundGroup(); }

  private:
    bool waitForNews(int milliseconds);
    void absorb();
    [[noreturn]] void giveUp(const std::string& description, const Caller& caller);

    Pty pty;
    TerminalModes modesAtStart;
    Emulator emulator;
    std::string allOutput;
    TerminalSession session;
    bool connected = true;  // the screen's side of the terminal is open
    bool complete = false;  // the program has ended and all of its output has arrived
};
