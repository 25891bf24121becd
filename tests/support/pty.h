#pragma once

#include <termios.h>

#include <iosfwd>
#include <string>

#include "tests/support/descriptor.h"

/// The settings of a terminal that a program must leave as it found them.
struct TerminalModes {
    termios settings;

    bool echo() const { return (settings.c_lflag & ECHO) != 0; }
    bool canonical() const { return (settings.c_lflag & ICANON) != 0; }
};

bool operator==(const TerminalModes& left, const TerminalModes& right);
bool operator!=(const TerminalModes& left, const TerminalModes& right);

std::ostream& operator<<(std::ostream& out, const TerminalModes& modes);

/// A pseudo-terminal: the test holds the side of the screen and the keyboard, the code under test
/// opens the other one, which stays open here too: modes and unread output outlive the program. A
/// system call that fails throws std::system_error.
class Pty {
  public:
    Pty(int rows, int cols);

    /// Opens the program's side once more; it does not become the controlling terminal.
    Descriptor openProgramSide() const;

    /// Readable when the program has written; for poll(2).
    int descriptor() const { return screenSide.get(); }

    /// What has been written to the screen since the last call, every write that has returned
    /// included; empty if nothing. Never waits.
    std::string read();

    /// Types as many of the bytes as the terminal takes at once, maybe none; returns how many.
    size_t write(const std::string& bytes);

    /// Whether something has been typed that nobody has read yet.
    bool hasUnreadInput() const;

    /// Writes to the screen until it takes no more, like a dead line, up to the next read().
    void fill() const;

    /// Sets the window size; the kernel tells the foreground process group by SIGWINCH.
    void resize(int rows, int cols);

    /// The foreground process group, 0 if there is none.
    int foregroundGroup() const;

    TerminalModes modes() const;

    /// Closes the screen's side, as when a connection breaks: the program gets SIGHUP.
    void hangUp();

  private:
    std::string programSideName;
    Descriptor screenSide;
    Descriptor programSide;
};
