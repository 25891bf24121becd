#include "ui/terminal/output_thinner.h"

#include <cstring>
#include <utility>

namespace {

constexpr char escape = 27;
constexpr char shift_out = 14;
constexpr char shift_in = 15;
constexpr char delete_character = 127;

bool is_between(char byte, char first, char last) {
    return byte >= first && byte <= last;
}

bool is_one_of(char byte, const char* bytes) {
    return byte != '\0' && std::strchr(bytes, byte) != nullptr;
}

bool is_control(char byte) {
    return is_between(byte, 0, ' ' - 1) || byte == delete_character;
}

bool is_ascii(char byte) {
    return static_cast<unsigned char>(byte) <= delete_character;
}

// An escape sequence as ECMA-48 divides it: ESC [ parameters, then for all of them intermediate
// bytes and a final byte.
std::string sequence_at(const std::string& text, size_t start) {
    size_t end = start + 1;
    const auto skip = [&](char first, char last) {
        while (end < text.size() && is_between(text[end], first, last))
            ++end;
    };
    if (end < text.size() && text[end] == '[') {
        ++end;
        skip('0', '?');
    }
    skip(' ', '/');
    return text.substr(start, end + 1 - start);
}

// A character in UTF-8, or a byte of another character set.
std::string character_at(const std::string& text, size_t start) {
    size_t end = start + 1;
    while (!is_ascii(text[start]) && end < text.size() && (text[end] & '\xc0') == '\x80')
        ++end;
    return text.substr(start, end - start);
}

// ESC [ numbers, and a final byte that is one of `finals`.
bool is_numeric(const std::string& sequence, const char* finals) {
    return sequence.size() > 2 && sequence[1] == '[' && is_one_of(sequence.back(), finals) &&
           sequence.find_first_not_of("0123456789;", 2) == sequence.size() - 1;
}

// Which mode a sequence switches, in a name that is the same for on and off; empty for those that
// may change more than a mode.
std::string mode_of(const std::string& sequence) {
    if (sequence == "\x1b=" || sequence == "\x1b>")
        return "keypad";
    std::string mode = sequence.substr(0, sequence.size() - 1);
    // Cursor keys, automatic margins, a blinking and a visible cursor.
    for (const char* known : {"\x1b[?1", "\x1b[?7", "\x1b[?12", "\x1b[?25"}) {
        if (mode == known && is_one_of(sequence.back(), "hl"))
            return mode;
    }
    return "";
}

// Sequences that neither show anything nor depend on attributes: to move the cursor, to repeat the
// character just shown, to set margins and modes, to designate G1.
bool is_harmless(const std::string& sequence) {
    return (sequence.size() == 3 && sequence[1] == ')') ||
           is_numeric(sequence, "ABCDEFGHIZ`abdefrhlt");
}

// Sequences that leave blanks in the background's colour: to erase, to insert, to delete, to
// scroll.
bool leaves_blanks(const std::string& sequence) {
    return (sequence.size() == 2 && is_one_of(sequence[1], "DM")) ||
           is_numeric(sequence, "JKLMPSTX@");
}

}  // namespace

std::string OutputThinner::thin(const std::string& said) {
    for (size_t at = 0; at < said.size();) {
        if (said[at] == escape) {
            const std::string sequence = sequence_at(said, at);
            takeSequence(sequence);
            at += sequence.size();
        } else if (is_control(said[at])) {
            takeControl(said[at++]);
        } else {
            at += takeText(said, at);
        }
    }
    leaveLineDrawing();
    return std::exchange(output, {});
}

std::string OutputThinner::settle() {
    forget();
    return std::exchange(output, {});
}

void OutputThinner::forget() {
    say(wanted);
    wanted = shown = unknown_terminal_look();
    modes.clear();
}

// A character and all that are the same behind it. The last one is not repeated but said, as it may
// be in the last column, where terminals differ. Returns how many bytes they are.
size_t OutputThinner::takeText(const std::string& said, size_t at) {
    said[at] == ' ' ? prepareForBlank() : say(wanted);
    const std::string character = character_at(said, at);
    const size_t size = character.size();
    size_t count = 1;
    while (!is_ascii(said[at]) && said.compare(at + count * size, size, character) == 0)
        ++count;
    const std::string whole = said.substr(at, count * size);
    const std::string shorter = character + "\x1b[" + std::to_string(count - 2) + "b" + character;
    output += repeats && shorter.size() < whole.size() ? shorter : whole;
    return whole.size();
}

void OutputThinner::takeControl(char control) {
    if (control == shift_in || control == shift_out) {
        wanted[look_shift] = control;
        return;
    }
    // At the bottom they scroll, which leaves blanks.
    if (is_one_of(control, "\n\v\f"))
        prepareForBlank();
    output += control;
}

void OutputThinner::takeSequence(const std::string& sequence) {
    const std::string mode = mode_of(sequence);
    if (!mode.empty()) {
        takeMode(mode, sequence);
    } else if (is_numeric(sequence, "m")) {
        take_rendition(wanted, sequence.substr(2, sequence.size() - 3));
    } else if (sequence.size() == 3 && sequence[1] == '(') {
        wanted[look_letters] = sequence;
    } else {
        if (leaves_blanks(sequence))
            prepareForBlank();
        else if (!is_harmless(sequence))
            forget();  // It may change anything, or save what there is now.
        output += sequence;
    }
}

void OutputThinner::takeMode(const std::string& mode, const std::string& sequence) {
    if (modes[mode] == sequence)
        return;
    modes[mode] = sequence;
    output += sequence;
}

// Boldness is not seen on a blank.
void OutputThinner::prepareForBlank() {
    TerminalLook look = wanted;
    if (differ_in_boldness_only(shown, wanted))
        look[look_bold] = shown[look_bold];
    say(look);
}

void OutputThinner::leaveLineDrawing() {
    TerminalLook look = shown;
    for (const TerminalAttribute set : {look_font, look_letters, look_shift})
        look[set] = wanted[set];
    say(look);
}

void OutputThinner::say(const TerminalLook& look) {
    if (look == shown)
        return;
    output += look_change(shown, look);
    shown = look;
}
