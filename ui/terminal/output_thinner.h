#pragma once

#include <map>
#include <string>

#include "ui/terminal/terminal_look.h"

/// Leaves out of what curses says to a terminal whatever makes no difference to what is seen.
///
/// Curses goes back to plain text after every update and sets all attributes anew for the next
/// character; it switches the keypad on for every window. A thinner keeps account of what the
/// terminal has been told last about each attribute, and says only what is new, when something is
/// about to be shown or erased. Sequences that it does not know go through as they are.
///
/// Owed are at most boldness across what leaves blanks, which is not to be seen there, and the way
/// back to plain text that curses takes at the end of a frame: it would make ten bytes of every
/// character that is typed.
///
/// For terminals that speak ECMA-48 only: elsewhere what looks like one of its sequences may mean
/// something else, such as ESC =, which moves the cursor of many.
class OutputThinner {
  public:
    /// `repeats`: whether the terminal repeats a character by CSI NUMBER b (REP), also one that is
    /// not of ASCII; curses has it repeat those of ASCII.
    explicit OutputThinner(bool repeats = false) : repeats(repeats) {}

    /// What to write instead of `said`, which ends where a sequence ends. Line-drawing characters
    /// are left in the end, so that what others write (wall(1)) can be read.
    std::string thin(const std::string& said);

    /// What brings the terminal to all that curses takes it to be; empty if nothing is owed. Takes
    /// nothing for granted from then on.
    std::string settle();

    /// The same as settle(), but it is the next call that says what is owed.
    void forget();

  private:
    size_t takeText(const std::string& said, size_t at);
    void takeControl(char control);
    void takeSequence(const std::string& sequence);
    void takeMode(const std::string& mode, const std::string& sequence);
    void prepareForBlank();
    void leaveLineDrawing();
    void say(const TerminalLook& look);

    bool repeats;
    TerminalLook wanted = unknown_terminal_look();  // by curses
    TerminalLook shown = unknown_terminal_look();   // by the terminal
    std::map<std::string, std::string> modes;       // the last sequence for each
    std::string output;
};
