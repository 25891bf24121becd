#include "ui/terminal/output_thinner.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace {

constexpr char line_font = 11;

// What sets G0, G0 or G1, the keypad, cursor keys, automatic margins, a blinking and a visible
// cursor, in the order of their attributes: all but the last byte, and what the last may be.
constexpr std::pair<std::string_view, std::string_view> switches[] = {
    {"\033(", "0ABK"}, {"", "\016\017"},   {"\033", "=>"},    {"\033[?1", "hl"},
    {"\033[?7", "hl"}, {"\033[?12", "hl"}, {"\033[?25", "hl"}};

bool is_one_of(char byte, std::string_view bytes) { return bytes.find(byte) != bytes.npos; }

bool is_ascii(char byte) { return (byte & '\x80') == 0; }

bool is_control(char byte) { return is_ascii(byte) && (byte < ' ' || byte == '\x7f'); }

// An escape sequence as ECMA-48 divides it (ESC [ parameters, then for all of them intermediate
// bytes and a final byte); spaces, other characters of ASCII, a character in UTF-8, or a byte.
std::string_view first_token(std::string_view text) {
    const char first = text[0];
    if (first == '\033') {
        size_t end = 1;
        if (text.compare(end, 1, "[") == 0) end = text.find_first_not_of("0123456789:;<=>?", 2);
        end = text.find_first_not_of(" !\"#$%&'()*+,-./", end);
        return text.substr(0, end == text.npos ? end : end + 1);
    }
    const auto goes_on = [first](char byte) {
        if (!is_ascii(first)) return (byte & '\xc0') == '\x80';
        return (first == ' ') == (byte == ' ') && is_ascii(byte) && !is_control(first) &&
               !is_control(byte);
    };
    const auto end = std::find_if_not(text.begin() + 1, text.end(), goes_on);
    return text.substr(0, static_cast<size_t>(end - text.begin()));
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
        size_t end = token.size();
        while (!is_ascii(token[0]) && said.compare(end, token.size(), token) == 0)
            end += token.size();
        if (!takeRendition(token) && !takeSwitch(token)) take(token, said.substr(0, end));
        said.remove_prefix(end);
    }
    Look without_lines = shown;
    for (const Attribute set : {font, letters, shift}) without_lines[set] = wanted[set];
    say(without_lines);
    return std::exchange(output, {});
}

void OutputThinner::forget() {
    say(wanted);
    wanted = shown = unknown_look;
}

OutputThinner::Attribute OutputThinner::attributeOf(long number) {
    if (number == 1) return bold;
    if (number == 10 || number == line_font) return font;
    if (number / 10 == 3 && number != 38) return foreground;
    return number / 10 == 4 && number != 48 ? background : others;
}

// False, with nothing taken, if it does not know one of the numbers.
bool OutputThinner::takeRendition(std::string_view token) {
    if (!is_numeric(token, "m")) return false;
    Look look = wanted;
    for (const char* at = token.data() + 2; at <= &token.back();) {
        char* end = nullptr;
        const long number = std::strtol(at, &end, 10);
        at = end + 1;
        const Attribute attribute = attributeOf(number);
        if (number == 0)
            look[others] = look[bold] = look[foreground] = look[background] = 0;
        else if (attribute == others)
            return false;
        else
            look[attribute] = static_cast<char>(number);
    }
    wanted = look;
    return true;
}

// Character sets wait for something to draw with them.
bool OutputThinner::takeSwitch(std::string_view token) {
    const char setting = token.back();
    const auto is_known = [&](const auto& known) {
        return token.substr(0, token.size() - 1) == known.first && is_one_of(setting, known.second);
    };
    const auto known = std::find_if(std::begin(switches), std::end(switches), is_known);
    if (known == std::end(switches)) return false;
    const size_t attribute = letters + static_cast<size_t>(known - switches);
    if (attribute >= modes && std::exchange(shown[attribute], setting) != setting) output += token;
    wanted[attribute] = setting;
    return true;
}

void OutputThinner::take(std::string_view token, std::string_view run) {
    Look look = wanted;
    const bool is_blank = leaves_blanks(token);
    // Boldness is not seen there.
    if (is_blank && look[others] == 0 && look[foreground] == shown[foreground] &&
        look[background] == shown[background])
        look[bold] = shown[bold];
    if (is_blank || !is_control(token[0]))
        say(look);
    else if (!is_harmless(token))
        forget();  // It may change anything, or save what there is now.
    // The last of a run is said, as it may be in the last column, where terminals differ.
    if (repeats && run.size() > 2 * token.size() + 4) {
        const size_t count = run.size() / token.size();
        output.append(token).append("\033[" + std::to_string(count - 2) + "b");
        run = token;
    }
    output.append(run);
}

// In the shortest way. Not every terminal knows how to take back a single attribute, but all know
// how to take all back; some consoles then go back to their plain font too.
void OutputThinner::say(const Look& look) {
    Look from = shown;
    for (const Attribute attribute : {others, bold, foreground, background}) {
        if (look[attribute] == 0 && shown[attribute] != 0)
            from = {0, 0, 0, 0, look[font] == line_font ? '\0' : shown[font]};
    }
    std::string numbers = from == shown ? "" : ";";
    for (const Attribute attribute : {bold, foreground, background, font})
        if (look[attribute] != from[attribute]) numbers += std::to_string(look[attribute]) + ";";
    if (!numbers.empty()) output += "\033[" + numbers.substr(0, numbers.size() - 1) + "m";
    if (look[letters] != shown[letters]) output += std::string("\033(") + look[letters];
    // A font puts a Linux console back to letters.
    if (look[shift] != 0 && (look[shift] != shown[shift] || look[font] != shown[font]))
        output += look[shift];
    shown = look;
}
