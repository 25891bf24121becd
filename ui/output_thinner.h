#pragma once

#include <map>
#include <string>

#include "ui/terminal_look.h"

/// Leaves out of what curses says to a terminal whatever makes no difference to what is seen.
///
/// Curses goes back to plain text after every update and sets all attributes anew for the next
/// character; it switches the keypad on for every window. A thinner keeps account of what the
/// terminal has been told, and says attributes and character sets only when something is about to
/// be shown for which they matter; for a blank that is the background alone. Sequences that it does
/// not know go through as they are.
///
/// For terminals that speak ECMA-48 only: elsewhere what looks like one of its sequences may mean
/// something else, such as ESC =, which moves the cursor of many.
class OutputThinner {
  public:
    /// What to write instead of `said`, which ends where a sequence ends. Boldness and colours that
    /// were set last may be owed still: the next call says them when they matter. Line-drawing
    /// characters are left at once, so that what others write (wall(1)) can be read.
    std::string thin(const std::string& said);

    /// What brings the terminal to all that curses takes it to be; empty if nothing is owed. Takes
    /// nothing for granted from then on.
    std::string settle();

    /// The same as settle(), but it is the next call that says what is owed.
    void forget();

  private:
    void takeControl(char control);
    void takeSequence(const std::string& sequence);
    void takeRendition(const std::string& sequence);
    void takeMode(const std::string& mode, const std::string& sequence);
    void takeOther(const std::string& sequence);
    void prepareForText();
    void prepareForBlank();
    void leaveLineDrawing();
    void show(const TerminalLook& look);

    TerminalLook wanted = unknown_terminal_look;  // by curses
    TerminalLook shown = unknown_terminal_look;   // by the terminal
    std::map<std::string, std::string> modes;     // the last sequence for each
    std::string output;
};
