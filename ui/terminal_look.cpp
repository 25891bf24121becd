#include "ui/terminal_look.h"

namespace {

constexpr int plain_foreground = 39;
constexpr int plain_background = 49;
constexpr int plain_font = 10;
constexpr int line_font = 11;

bool is_between(int value, int first, int last) {
    return value >= first && value <= last;
}

bool is_foreground(int parameter) {
    return is_between(parameter, 30, 37) || parameter == plain_foreground;
}

bool is_background(int parameter) {
    return is_between(parameter, 40, 47) || parameter == plain_background;
}

// Whether a parameter makes those behind it into a colour of its own: an extended foreground,
// background or underline.
bool begins_extended_colour(int parameter) {
    return parameter == 38 || parameter == 48 || parameter == 58;
}

void forget_rendition(TerminalLook& look) {
    look.bold = look.foreground = look.background = unknown_look;
}

void take_parameter(TerminalLook& look, int parameter) {
    if (parameter == 0) {
        look.bold = 0;
        look.foreground = plain_foreground;
        look.background = plain_background;
    } else if (parameter == plain_font || parameter == line_font) {
        look.font = parameter;
    } else if (!is_known(look)) {
        // What is not known lasts until all is taken back.
        return;
    } else if (parameter == 1) {
        look.bold = 1;
    } else if (is_foreground(parameter)) {
        look.foreground = parameter;
    } else if (is_background(parameter)) {
        look.background = parameter;
    } else {
        forget_rendition(look);
    }
}

// Not every terminal knows how to take back a single attribute, but all know how to take all back.
bool takes_back(const TerminalLook& shown, const TerminalLook& wanted) {
    return !is_known(shown) || (shown.bold == 1 && wanted.bold == 0) ||
           (shown.foreground != plain_foreground && wanted.foreground == plain_foreground) ||
           (shown.background != plain_background && wanted.background == plain_background);
}

bool same_rendition(const TerminalLook& one, const TerminalLook& other) {
    return one.bold == other.bold && one.foreground == other.foreground &&
           one.background == other.background;
}

}  // namespace

bool is_known(const TerminalLook& look) {
    return look.bold != unknown_look && look.foreground != unknown_look &&
           look.background != unknown_look;
}

void take_rendition(TerminalLook& look, const std::vector<int>& parameters) {
    for (const int parameter : parameters) {
        if (begins_extended_colour(parameter)) {
            forget_rendition(look);
            return;
        }
        take_parameter(look, parameter);
    }
}

std::string rendition_change(const TerminalLook& shown, const TerminalLook& wanted) {
    TerminalLook from = shown;
    std::string parameters;
    bool takes_all_back = false;
    if (!same_rendition(shown, wanted) && takes_back(shown, wanted)) {
        take_parameter(from, 0);
        takes_all_back = true;
    }
    const auto add = [&](int had, int parameter) {
        if (had != parameter)
            parameters += ";" + std::to_string(parameter);
    };
    add(from.bold, wanted.bold);
    add(from.foreground, wanted.foreground);
    add(from.background, wanted.background);
    // Some consoles go back to their plain font too when they take all back.
    if (takes_all_back && wanted.font == line_font)
        from.font = unknown_look;
    add(from.font, wanted.font);
    if (takes_all_back)
        return "\x1b[" + parameters + "m";
    return parameters.empty() ? "" : "\x1b[" + parameters.substr(1) + "m";
}

std::string character_set_change(const TerminalLook& shown, const TerminalLook& wanted) {
    std::string change;
    if (wanted.g0 != shown.g0)
        change += {'\x1b', '(', static_cast<char>(wanted.g0)};
    if (wanted.shift != shown.shift)
        change += static_cast<char>(wanted.shift);
    return change;
}
