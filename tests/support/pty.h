#pragma once

#include <termios.h>

#include <iosfwd>
#include <string>

#include "tests/support/descriptor.h"

/// The line discipline's settings of a terminal, for comparing: a program must leave them as it
/// found them.
struct TerminalModes {
    termios settings;

    bool echo() const { return (settings.c_lflag & ECHO) != 0; }
    bool canonical() const { return (settings.c_lflag & ICANON) != 0; }
};

/// Reads the modes of an open terminal; either side of a pty will do. Throws std::system_error.
TerminalModes read_terminal_modes(int descriptor);

bool operator==(const TerminalModes& left, const TerminalModes& right);
bool operator!=(const TerminalModes& left, const TerminalModes& right);

/// Writes the flag words in octal with the common flags by name.
std::ostream& operator<<(std::ostream& out, const TerminalModes& modes);

/// A pseudo-terminal: the test holds the side of the screen and the keyboard, the code under test
/// opens the other one. A system call that fails throws std::system_error.
///
/// The program's side is kept open here too, so that the terminal lives on, modes and unread output
/// included, when the program closes it.
class Pty {
  public:
    Pty(int rows, int cols);

    /// Opens the program's side once more; it does not become the controlling terminal.
    Descriptor openProgramSide() const;

    /// Readable when the program has written; for poll(2).
    int descriptor() const { return screenSide.get(); }

    /// What has been written to the screen since the last call; empty if nothing, never waits. A
    /// write that has returned before the call is in it: the kernel delivers what is on its way
    /// between the two sides before it says that there is nothing. It does so for the program's
    /// side too.
    std::string read();

    /// Types as many of the bytes as the terminal takes at once, maybe none; returns how many.
    size_t write(const std::string& bytes);

    /// Whether something has been typed that nobody has read yet.
    bool hasUnreadInput() const;

    /// Writes to the screen until it takes no more, as a line does that is dead. It takes again
    /// what the program writes once read() has been called.
    void fill() const;

    /// Sets the window size; the kernel tells the foreground process group by SIGWINCH.
    void resize(int rows, int cols);

    /// The foreground process group, 0 if there is none.
    int foregroundGroup() const;

    TerminalModes modes() const;

    /// Closes the screen's side, as when a connection breaks: the program gets SIGHUP and can
    /// neither read nor write any more.
    void hangUp();

  private:
    std::string programSideName;
    Descriptor screenSide;
    Descriptor programSide;
};
