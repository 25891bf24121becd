#include "ui/output_thinner.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

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

bool is_control_sequence(const std::string& sequence) {
    return sequence.size() > 2 && sequence[1] == '[';
}

// What stands between the introducer and the final byte.
std::string parameters_of(const std::string& sequence) {
    return sequence.substr(2, sequence.size() - 3);
}

bool is_list(const std::string& parameters) {
    return parameters.find_first_not_of("0123456789;") == std::string::npos;
}

// The numbers of a list with semicolons, an omitted one being 0.
std::vector<int> numbers_in(const std::string& list) {
    std::vector<int> numbers = {0};
    for (const char character : list) {
        constexpr int most = 1000;
        if (character == ';')
            numbers.push_back(0);
        else
            numbers.back() = std::min(numbers.back() * 10 + (character - '0'), most);
    }
    return numbers;
}

// Which mode a sequence switches, in a name that is the same for on and off; empty for those that
// may change more than a mode.
std::string mode_of(const std::string& sequence) {
    if (sequence == "\x1b=" || sequence == "\x1b>")
        return "keypad";
    const char final = sequence.back();
    if (!is_control_sequence(sequence) || sequence[2] != '?' || (final != 'h' && final != 'l'))
        return "";
    // Cursor keys, automatic margins, a blinking and a visible cursor.
    const std::string mode = parameters_of(sequence).substr(1);
    return mode == "1" || mode == "7" || mode == "12" || mode == "25" ? mode : "";
}

// Sequences that neither show anything nor depend on attributes: to move the cursor, to repeat the
// character just shown, to set margins and modes, to designate G1.
bool is_harmless(const std::string& sequence) {
    if (sequence.size() == 3 && sequence[1] == ')')
        return true;
    return is_control_sequence(sequence) && is_list(parameters_of(sequence)) &&
           is_one_of(sequence.back(), "ABCDEFGHIZ`abdefrhlt");
}

// Sequences that leave blanks in the background's colour: to erase, to insert, to delete, to
// scroll.
bool leaves_blanks(const std::string& sequence) {
    if (sequence.size() == 2 && is_one_of(sequence[1], "DM"))
        return true;
    return is_control_sequence(sequence) && is_list(parameters_of(sequence)) &&
           is_one_of(sequence.back(), "JKLMPSTX@");
}

bool is_rendition(const std::string& sequence) {
    return is_control_sequence(sequence) && sequence.back() == 'm' &&
           is_list(parameters_of(sequence));
}

}  // namespace

std::string OutputThinner::thin(const std::string& said) {
    for (size_t at = 0; at < said.size(); ++at) {
        const char byte = said[at];
        if (byte == escape) {
            const std::string sequence = sequence_at(said, at);
            takeSequence(sequence);
            at += sequence.size() - 1;
        } else if (is_control(byte)) {
            takeControl(byte);
        } else {
            byte == ' ' ? prepareForBlank() : prepareForText();
            output += byte;
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
    prepareForText();
    wanted = unknown_terminal_look;
    shown = unknown_terminal_look;
    modes.clear();
}

void OutputThinner::takeControl(char control) {
    if (control == shift_in || control == shift_out) {
        wanted.shift = static_cast<unsigned char>(control);
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
    } else if (is_rendition(sequence)) {
        takeRendition(sequence);
    } else if (sequence.size() == 3 && sequence[1] == '(') {
        wanted.g0 = static_cast<unsigned char>(sequence[2]);
    } else if (is_harmless(sequence)) {
        output += sequence;
    } else if (leaves_blanks(sequence)) {
        prepareForBlank();
        output += sequence;
    } else {
        takeOther(sequence);
    }
}

void OutputThinner::takeRendition(const std::string& sequence) {
    TerminalLook next = wanted;
    take_rendition(next, numbers_in(parameters_of(sequence)));
    if (!is_known(next)) {
        prepareForText();
        output += sequence;
        shown = next;
    }
    wanted = next;
}

void OutputThinner::takeMode(const std::string& mode, const std::string& sequence) {
    if (modes[mode] == sequence)
        return;
    modes[mode] = sequence;
    output += sequence;
}

// It may change anything, or save what there is now.
void OutputThinner::takeOther(const std::string& sequence) {
    forget();
    output += sequence;
}

void OutputThinner::prepareForText() {
    show(wanted);
}

void OutputThinner::leaveLineDrawing() {
    TerminalLook letters = shown;
    letters.font = wanted.font;
    letters.g0 = wanted.g0;
    letters.shift = wanted.shift;
    show(letters);
}

void OutputThinner::show(const TerminalLook& look) {
    output += character_set_change(shown, look) + rendition_change(shown, look);
    shown = look;
}

void OutputThinner::prepareForBlank() {
    if (wanted.background != shown.background)
        prepareForText();
}
