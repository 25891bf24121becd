#include "ui/terminal/output_thinner.h"

#include <string_view>
#include <utility>

namespace {

constexpr char line_font[] = "11";

bool is_one_of(char byte, std::string_view bytes) {
    return bytes.find(byte) != std::string_view::npos;
}

bool is_ascii(char byte) { return (byte & '\x80') == 0; }

bool is_control(char byte) { return is_ascii(byte) && (byte < ' ' || byte == '\x7f'); }

// An escape sequence as ECMA-48 divides it (ESC [ parameters, then for all of them intermediate
// bytes and a final byte), a character in UTF-8, or a byte.
std::string token_at(const std::string& text, size_t start) {
    size_t end = start + 1;
    if (text[start] == '\033') {
        if (text.compare(end, 1, "[") == 0)
            end = text.find_first_not_of("0123456789:;<=>?", end + 1);
        end = text.find_first_not_of(" !\"#$%&'()*+,-./", end);
        end = end == std::string::npos ? end : end + 1;
    }
    while (!is_ascii(text[start]) && end < text.size() && (text[end] & '\xc0') == '\x80') ++end;
    return text.substr(start, end - start);
}

// It and what follows it, if they are the same and beyond ASCII.
std::string run_at(const std::string& text, size_t start, const std::string& token) {
    size_t end = start + token.size();
    while (!is_ascii(token[0]) && text.compare(end, token.size(), token) == 0) end += token.size();
    return text.substr(start, end - start);
}

// ESC [ numbers, and a final byte that is one of `finals`.
bool is_numeric(const std::string& token, const char* finals) {
    return token.compare(0, 2, "\033[") == 0 && is_one_of(token.back(), finals) &&
           token.find_first_not_of("0123456789;", 2) == token.size() - 1;
}

// The space, and what erases, inserts, deletes or scrolls, in the background's colour. At the
// bottom some controls do.
bool leaves_blanks(const std::string& token) {
    return token == " " || token == "\n" || token == "\v" || token == "\f" || token == "\033D" ||
           token == "\033M" || is_numeric(token, "JKLMPSTX@");
}

// Neither shows anything nor depends on attributes: moves the cursor, repeats the character just
// shown, sets margins and modes, designates G1.
bool is_harmless(const std::string& token) {
    return token[0] != '\033' || token.compare(1, 1, ")") == 0 ||
           is_numeric(token, "ABCDEFGHIZ`abdefrhlt");
}

}  // namespace

std::string OutputThinner::thin(const std::string& said) {
    for (size_t at = 0; at < said.size();) {
        const std::string token = token_at(said, at);
        const std::string run = run_at(said, at, token);
        at += run.size();
        if (!takeRendition(token) && !takeSet(token) && !takeMode(token)) take(token, run);
    }
    Look without_lines = shown;
    for (const Attribute set : {font, letters, shift}) without_lines[set] = wanted[set];
    say(without_lines);
    return std::exchange(output, {});
}

void OutputThinner::forget() {
    say(wanted);
    wanted = shown = unknownLook();
    modes.clear();
}

// The last of a run is not repeated but said, as it may be in the last column, where terminals
// differ.
void OutputThinner::take(const std::string& token, const std::string& run) {
    if (leaves_blanks(token))
        sayForBlank();
    else if (!is_control(token[0]))
        say(wanted);
    else if (!is_harmless(token))
        forget();  // It may change anything, or save what there is now.
    const size_t repetitions = run.size() / token.size() - 2;
    const std::string shorter = token + "\033[" + std::to_string(repetitions) + "b" + token;
    output += repeats && shorter.size() < run.size() ? shorter : run;
}

// False, with nothing taken, if it does not know the parameter.
bool OutputThinner::takeParameter(Look& look, const std::string& parameter) {
    const bool is_colour = parameter.size() == 2 && parameter[1] != '8';
    if (parameter.empty() || parameter == "0")
        look[others] = look[bold] = look[foreground] = look[background] = "";
    else if (parameter == "1")
        look[bold] = parameter;
    else if (parameter == "10" || parameter == line_font)
        look[font] = parameter;
    else if (is_colour && parameter[0] == '3')
        look[foreground] = parameter;
    else if (is_colour && parameter[0] == '4')
        look[background] = parameter;
    else
        return false;
    return true;
}

// The same for any of the parameters.
bool OutputThinner::takeRendition(const std::string& token) {
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
bool OutputThinner::takeSet(const std::string& token) {
    const bool shifts = token == "\016" || token == "\017";
    if (!shifts && token.compare(0, 2, "\033(") != 0) return false;
    wanted[shifts ? shift : letters] = token;
    return true;
}

// The keypad, cursor keys, automatic margins, a blinking and a visible cursor: each mode is told
// apart by all but the last byte.
bool OutputThinner::takeMode(const std::string& token) {
    const std::string mode = token.substr(0, token.size() - 1);
    const bool is_private =
        mode == "\033[?1" || mode == "\033[?7" || mode == "\033[?12" || mode == "\033[?25";
    if (!is_one_of(token.back(), is_private ? "hl" : mode == "\033" ? "=>" : "")) return false;
    if (std::exchange(modes[mode], token) != token) output += token;
    return true;
}

// Boldness is not seen on a blank.
void OutputThinner::sayForBlank() {
    Look look = wanted;
    if (look[others].empty() && look[foreground] == shown[foreground] &&
        look[background] == shown[background])
        look[bold] = shown[bold];
    say(look);
}

void OutputThinner::say(const Look& look) {
    output += rendition(look);
    if (look[letters] != shown[letters]) output += look[letters];
    // A font puts a Linux console back to letters.
    if (look[shift] != shown[shift] || look[font] != shown[font]) output += look[shift];
    shown = look;
}

// The shortest SGR. Not every terminal knows how to take back a single attribute, but all know how
// to take all back; some consoles then go back to their plain font too.
std::string OutputThinner::rendition(const Look& look) const {
    Look from = shown;
    for (const Attribute attribute : {others, bold, foreground, background}) {
        if (look[attribute].empty() && !shown[attribute].empty())
            from = {"", "", "", "", look[font] == line_font ? "" : shown[font]};
    }
    std::string parameters;
    for (const Attribute attribute : {bold, foreground, background, font})
        parameters += from[attribute] != look[attribute] ? ";" + look[attribute] : "";
    if (from != shown) return "\033[" + parameters + "m";
    return parameters.empty() ? "" : "\033[" + parameters.substr(1) + "m";
}
