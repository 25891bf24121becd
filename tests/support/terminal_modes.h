#pragma once

#include <termios.h>

#include <iosfwd>

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
