#pragma once

#include <string>
#include <vector>

/// How a terminal shows the next character, as far as it has been told in control sequences of
/// ECMA-48; see console_codes(4). A field of which nothing is known is `unknown_look`.
struct TerminalLook {
    int bold;        ///< 0 or 1
    int foreground;  ///< 30 to 37, or 39 for the terminal's own
    int background;  ///< 40 to 47, or 49
    int font;        ///< 10, or 11 for a console's line-drawing characters
    int g0;          ///< final byte of the sequence that designates G0: B is ASCII, 0 draws lines
    int shift;       ///< SI or SO: whether G0 or G1 is in use
};

constexpr int unknown_look = -1;
constexpr TerminalLook unknown_terminal_look = {unknown_look, unknown_look, unknown_look,
                                                unknown_look, unknown_look, unknown_look};

/// Whether boldness and colours are all known.
bool is_known(const TerminalLook& look);

/// Takes the parameters of "Select Graphic Rendition" (CSI ... m) into `look`, whose boldness and
/// colours become unknown if a parameter asks for anything else than its fields can hold, and stay
/// so until 0 takes all back.
void take_rendition(TerminalLook& look, const std::vector<int>& parameters);

/// The shortest sequence that brings boldness, colours and font from `shown` to `wanted`; empty if
/// there is no difference. Boldness and colours of `wanted` are known, or the same.
std::string rendition_change(const TerminalLook& shown, const TerminalLook& wanted);

/// The same for the character sets.
std::string character_set_change(const TerminalLook& shown, const TerminalLook& wanted);
