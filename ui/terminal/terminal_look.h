#pragma once

#include <array>
#include <string>

/// What sets how a terminal shows the next character, in control sequences of ECMA-48; see
/// console_codes(4). `look_others` is whatever "Select Graphic Rendition" (SGR) sets beside those
/// before it; `look_letters` designates G0, and `look_shift` is SI or SO.
enum TerminalAttribute {
    look_bold,
    look_foreground,
    look_background,
    look_font,
    look_others,
    look_letters,
    look_shift,
    look_size
};

/// What was said last about each attribute: parameters of SGR, or sequences. Empty for what is
/// plain or has never been said.
using TerminalLook = std::array<std::string, look_size>;

/// The look of a terminal of which nothing is known.
TerminalLook unknown_terminal_look();

/// Takes the parameters of SGR (CSI ... m) into `look`. Once there are others, boldness and colours
/// count among them, until 0 takes all back.
void take_rendition(TerminalLook& look, const std::string& parameters);

/// What brings a terminal from `shown` to `wanted`, which has come from it by take_rendition() or
/// by other sets: the shortest SGR, then the character sets. Empty if there is no difference.
std::string look_change(const TerminalLook& shown, const TerminalLook& wanted);

/// Whether SGR has set the same but for boldness, and font.
bool differ_in_boldness_only(const TerminalLook& one, const TerminalLook& other);
