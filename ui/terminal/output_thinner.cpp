#include "ui/terminal/output_thinner.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace {

constexpr unsigned char line_font = 11;

bool is_one_of(char byte, std::string_view bytes) {
    return bytes.find(byte) != std::string_view::npos;
}

bool is_ascii(char byte) { return (byte & '\x80') == 0; }

bool is_control(char byte) { return is_ascii(byte) && (byte < ' ' || byte == '\x7f'); }

// An escape sequence as ECMA-48 divides it (ESC [ parameters, then for all of them intermediate
// bytes and a final byte).
std::string_view first_sequence(std::string_view text) {
    size_t end = 1;
    if (text.compare(end, 1, "[") == 0) end = text.find_first_not_of("0123456789:;<=>?", 2);
    end = text.find_first_not_of(" !\"#$%&'()*+,-./", end);
    return text.substr(0, end == text.npos ? end : end + 1);
}

// The same; or spaces, other characters of ASCII, a character in UTF-8, or a byte.
std::string_view first_token(std::string_view text) {
    const char first = text[0];
    if (first == '\033') return first_sequence(text);
    const auto goes_on = [first](char byte) {
        if (first == ' ' || byte == ' ') return first == byte;
        return is_ascii(first) ? !is_control(first) && is_ascii(byte) && !is_control(byte)
                               : (byte & '\xc0') == '\x80';
    };
    const auto end = std::find_if_not(text.begin() + 1, text.end(), goes_on);
    return text.substr(0, static_cast<size_t>(end - text.begin()));
}

// It and what follows it, if they are the same and beyond ASCII.
std::string_view first_run(std::string_view text, std::string_view token) {
    size_t end = token.size();
    while (!is_ascii(token[0]) && text.compare(end, token.size(), token) == 0) end += token.size();
    return text.substr(0, end);
}

// ESC [ numbers, and a final byte that is one of `finals`.
bool is_numeric(std::string_view token, std::string_view finals) {
    return token.compare(0, 2, "\033[") == 0 && is_one_of(token.back(), finals) &&
           token.find_first_not_of("0123456789;", 2) == token.size() - 1;
}

// Spaces, and what erases, inserts, deletes or scrolls, in the background's colour. At the bottom
// some controls do.
bool leaves_blanks(std::string_view token) {
    return is_one_of(token[0], " \n\v\f") || token == "\033D" || token == "\033M" ||
           is_numeric(token, "JKLMPSTX@");
}

// Neither shows anything nor depends on attributes: moves the cursor, repeats the character just
// shown, sets margins and modes, designates G1.
bool is_harmless(std::string_view token) {
    return token[0] != '\033' || token.compare(1, 1, ")") == 0 ||
           is_numeric(token, "ABCDEFGHIZ`abdefrhlt");
}

}  // namespace

std::string OutputThinner::thin(std::string_view said) {
    while (!said.empty()) {
        const std::string_view token = first_token(said);
        const std::string_view run = first_run(said, token);
        said.remove_prefix(run.size());
        if (!takeRendition(token) && !takeSet(token) && !takeMode(token)) take(token, run);
    }
    Look without_lines = shown;
    for (const Attribute set : {font, letters, shift}) without_lines[set] = wanted[set];
    say(without_lines);
    return std::exchange(output, {});
}

void OutputThinner::forget() {
    say(wanted);
    wanted = shown = unknown_look;
    std::fill(std::begin(modesSaid), std::end(modesSaid), '\0');
}

// The last of a run is not repeated but said, as it may be in the last column, where terminals
// differ.
void OutputThinner::take(std::string_view token, std::string_view run) {
    if (leaves_blanks(token))
        sayForBlank();
    else if (!is_control(token[0]))
        say(wanted);
    else if (!is_harmless(token))
        forget();  // It may change anything, or save what there is now.
    const size_t length = output.size();
    const size_t count = run.size() / token.size();
    if (repeats && count > 2)
        output.append(token).append("\033[" + std::to_string(count - 2) + "b").append(token);
    if (output.size() == length || output.size() - length >= run.size())
        output.replace(length, output.npos, run);
}

// False, with nothing taken, if it does not know the parameter.
bool OutputThinner::takeParameter(Look& look, std::string_view parameter) {
    unsigned char number = parameter.empty() ? 0 : 255;
    std::from_chars(parameter.begin(), parameter.end(), number);
    const bool is_colour = parameter.size() == 2 && number % 10 != 8;
    if (number == 0)
        look[others] = look[bold] = look[foreground] = look[background] = 0;
    else if (number == 1)
        look[bold] = number;
    else if (number == 10 || number == line_font)
        look[font] = number;
    else if (is_colour && number / 10 == 3)
        look[foreground] = number;
    else if (is_colour && number / 10 == 4)
        look[background] = number;
    else
        return false;
    return true;
}

// The same for any of the parameters.
bool OutputThinner::takeRendition(std::string_view token) {
    if (!is_numeric(token, "m")) return false;
    Look look = wanted;
    for (size_t at = 2; at < token.size();) {
        const size_t end = token.find_first_of(";m", at);
        if (!takeParameter(look, token.substr(at, end - at))) return false;
        at = end + 1;
    }
    wanted = look;
    return true;
}

// Which character set to draw with.
bool OutputThinner::takeSet(std::string_view token) {
    const bool designates = token.size() == 3 && token.compare(0, 2, "\033(") == 0;
    if (!designates && token != "\016" && token != "\017") return false;
    wanted[designates ? letters : shift] = static_cast<unsigned char>(token.back());
    return true;
}

// The keypad, cursor keys, automatic margins, a blinking and a visible cursor: each mode is told
// apart by all but the last byte.
bool OutputThinner::takeMode(std::string_view token) {
    const std::string_view name = token.substr(0, token.size() - 1);
    const auto mode = std::find(std::begin(modes), std::end(modes), name);
    if (mode == std::end(modes) || !is_one_of(token.back(), name.size() > 1 ? "hl" : "=>"))
        return false;
    if (std::exchange(modesSaid[mode - std::begin(modes)], token.back()) != token.back())
        output += token;
    return true;
}

// Boldness is not seen on a blank.
void OutputThinner::sayForBlank() {
    Look look = wanted;
    if (look[others] == 0 && look[foreground] == shown[foreground] &&
        look[background] == shown[background])
        look[bold] = shown[bold];
    say(look);
}

void OutputThinner::say(const Look& look) {
    if (look == shown) return;
    output += rendition(look);
    if (look[letters] != shown[letters] && look[letters] != 0)
        output.append("\033(").push_back(static_cast<char>(look[letters]));
    // A font puts a Linux console back to letters.
    if ((look[shift] != shown[shift] || look[font] != shown[font]) && look[shift] != 0)
        output += static_cast<char>(look[shift]);
    shown = look;
}

// The shortest SGR. Not every terminal knows how to take back a single attribute, but all know how
// to take all back; some consoles then go back to their plain font too.
std::string OutputThinner::rendition(const Look& look) const {
    Look from = shown;
    for (const Attribute attribute : {others, bold, foreground, background}) {
        if (look[attribute] == 0 && shown[attribute] != 0)
            from = {0, 0, 0, 0,
                    look[font] == line_font ? static_cast<unsigned char>(0) : shown[font]};
    }
    std::string parameters;
    for (const Attribute attribute : {bold, foreground, background, font}) {
        if (from[attribute] != look[attribute])
            parameters.append(";").append(std::to_string(look[attribute]));
    }
    if (from != shown) return "\033[" + parameters + "m";
    return parameters.empty() ? "" : "\033[" + parameters.substr(1) + "m";
}
