#include "tests/support/escape_sequences.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>

namespace {

constexpr char escape = '\x1b';

/// The Linux console resets its palette on this, which has no end mark.
constexpr const char* palette_reset = "\x1b]R";

size_t character_length(char first_byte) {
    const auto value = static_cast<unsigned char>(first_byte);
    return value < 0xc0 ? 1 : value < 0xe0 ? 2 : value < 0xf0 ? 3 : 4;
}

/// An operating system command goes on to BEL or to the string terminator.
size_t system_command_length(const std::string& text, size_t at) {
    if (text.compare(at, 3, palette_reset) == 0) return 3;
    const size_t end = text.find_first_of("\a\x1b", at + 2);
    if (end == std::string::npos) return 0;
    const size_t length = end - at + (text[end] == '\a' ? 1 : 2);
    return at + length <= text.size() ? length : 0;
}

/// "[", parameters and a final character from "@" on, or some of " " to "/" and one from "0" on.
size_t sequence_length(const std::string& text, size_t at) {
    const char kind = text[at + 1];
    if (kind == ']') return system_command_length(text, at);
    const char first_final = kind == '[' ? '@' : '0';
    for (size_t end = at + (kind == '[' ? 2 : 1); end < text.size(); ++end) {
        if (text[end] < ' ') return end - at;
        if (text[end] >= first_final) return end - at + 1;
    }
    return 0;
}

/// What a program writes falls into units: a character in UTF-8, a control character, an escape
/// sequence. Returns how many bytes the unit at `at` has, up to another that cuts it short; 0 if
/// the text ends within it.
size_t unit_length(const std::string& text, size_t at) {
    if (at + 1 < text.size() && text[at] == escape) return sequence_length(text, at);
    if (at == text.size() || text[at] == escape) return 0;
    const size_t whole = character_length(text[at]);
    for (size_t length = 1; length < whole; ++length) {
        if (at + length == text.size()) return 0;
        if ((text[at + length] & '\xc0') != '\x80') return length;
    }
    return whole;
}

/// How often the unit wants the character before repeated, 0 if it wants something else. Bounded,
/// as no screen is that large.
int repetitions(const std::string& unit) {
    const bool numbered = unit.size() > 2 && unit.back() == 'b' && unit[1] == '[' &&
                          unit.find_first_not_of("0123456789", 2) == unit.size() - 1;
    return numbered ? std::clamp(std::atoi(unit.c_str() + 2), 1, 10000) : 0;
}

}  // namespace

std::string plain_text(const std::string& output) {
    std::string text;
    size_t length = 0;
    for (size_t at = 0; (length = unit_length(output, at)) > 0; at += length) {
        const auto first = static_cast<unsigned char>(output[at]);
        if (first == '\n' || first == '\t' || std::iscntrl(first) == 0)
            text.append(output, at, length);
    }
    return text;
}

std::string OutputFilter::filter(const std::string& piece) {
    incomplete += piece;
    std::string output;
    size_t at = 0;
    for (size_t length = 0; (length = unit_length(incomplete, at)) > 0; at += length)
        output += prepared(incomplete.substr(at, length));
    incomplete.erase(0, at);
    return output;
}

/// libvterm wraps a line when one column is left after "repeat the character before", shows broken
/// characters too late, and takes what follows a reset of the palette for an operating system
/// command.
std::string OutputFilter::prepared(const std::string& unit) {
    if (unit[0] == escape) {
        std::string repeated;
        for (int count = last.empty() ? 0 : repetitions(unit); count > 0; --count) repeated += last;
        return linuxConsole && unit == palette_reset ? "" : repeated.empty() ? unit : repeated;
    }
    if (unit.size() < character_length(unit[0])) return "";
    last = static_cast<unsigned char>(unit[0]) < ' ' ? "" : unit;
    return unit;
}
