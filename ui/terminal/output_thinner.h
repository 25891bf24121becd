#pragma once

#include <array>
#include <string>
#include <string_view>

/// Leaves out of what curses says to a terminal whatever makes no difference to what is seen.
///
/// Curses goes back to plain text after every update, sets all attributes anew for the next
/// character, and switches the keypad on for every window. A thinner says only what is new, when
/// something is about to be shown or erased; nothing of boldness where that is spaces. Sequences
/// that it does not know go through as they are, after all that is owed.
///
/// For terminals that speak ECMA-48 only, console_codes(4): elsewhere what looks like one of its
/// sequences may mean something else, such as ESC =, which moves the cursor of many.
class OutputThinner {
  public:
    /// `repeats`: whether the terminal repeats a character by CSI NUMBER b (REP), also one that is
    /// not of ASCII; curses has it repeat those of ASCII.
    explicit OutputThinner(bool repeats = false) : repeats(repeats) {}

    /// What to write instead of `said`, which ends where a sequence ends. Line-drawing characters
    /// are left in the end, so that what others write (wall(1)) can be read.
    std::string thin(std::string_view said);

    /// Takes nothing for granted any more. The next call says first what is owed.
    void forget();

  private:
    // Four that "Select Graphic Rendition" (SGR), CSI ... m, takes back together, unknown ones
    // first; a console's font, which it sets too; what designates G0; SI or SO; modes.
    enum Attribute { others, bold, foreground, background, font, letters, shift, modes };

    // What was said last about each: an SGR number or a last byte; 0 for what was taken back or
    // never said.
    using Look = std::array<char, modes + 5>;
    static constexpr Look unknown_look = {1};

    static Attribute attributeOf(long number);
    bool takeRendition(std::string_view token);
    bool takeSwitch(std::string_view token);
    void take(std::string_view token, std::string_view run);
    void say(const Look& look);

    bool repeats;
    Look wanted = unknown_look;  // by curses
    Look shown = unknown_look;   // by the terminal
    std::string output;
};
