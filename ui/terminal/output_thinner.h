#pragma once

#include <array>
#include <map>
#include <string>

/// Leaves out of what curses says to a terminal whatever makes no difference to what is seen.
///
/// Curses goes back to plain text after every update and sets all attributes anew for the next
/// character; it switches the keypad on for every window. A thinner keeps account of what was said
/// last about each attribute, and says only what is new, when something is about to be shown or
/// erased. Sequences that it does not know go through as they are, after all that is owed: boldness
/// across blanks, where it is not seen, and the way back to plain text at the end of a frame.
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
    std::string thin(const std::string& said);

    /// Takes nothing for granted any more. The next call says first what is owed.
    void forget();

  private:
    // Four that "Select Graphic Rendition" (SGR), CSI ... m, sets and takes back together, unknown
    // ones first; a console's font, which it sets too; what designates G0; SI or SO.
    enum Attribute { others, bold, foreground, background, font, letters, shift, attribute_count };

    // What was said last about each; empty for what was taken back or never said.
    using Look = std::array<std::string, attribute_count>;
    static Look unknownLook() { return {"unknown"}; }

    static bool takeParameter(Look& look, const std::string& parameter);
    bool takeRendition(const std::string& token);
    bool takeSet(const std::string& token);
    bool takeMode(const std::string& token);
    void take(const std::string& token, const std::string& run);
    void sayForBlank();
    void say(const Look& look);
    std::string rendition(const Look& look) const;

    bool repeats;
    Look wanted = unknownLook();               // by curses
    Look shown = unknownLook();                // by the terminal
    std::map<std::string, std::string> modes;  // what was said last about each
    std::string output;
};
