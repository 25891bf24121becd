#include "ui/terminal/terminal_look.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr char line_font[] = "11";

// Of these three nothing is left when all is taken back; without others they are known.
constexpr TerminalAttribute plain_attributes[] = {look_bold, look_foreground, look_background};

void take_parameter(TerminalLook& look, const std::string& parameter) {
    if (parameter.empty() || parameter == "0") {
        look[look_others].clear();
        for (const TerminalAttribute attribute : plain_attributes)
            look[attribute].clear();
    } else if (parameter == "10" || parameter == line_font) {
        look[look_font] = parameter;
    } else if (look[look_others].empty() && parameter == "1") {
        look[look_bold] = parameter;
    } else if (look[look_others].empty() && parameter.size() == 2 && parameter[0] == '3') {
        look[look_foreground] = parameter == "39" ? "" : parameter;
    } else if (look[look_others].empty() && parameter.size() == 2 && parameter[0] == '4') {
        look[look_background] = parameter == "49" ? "" : parameter;
    } else {
        look[look_others] += ";" + parameter;
    }
}

// Whether a parameter makes those behind it into a colour of its own: an extended foreground,
// background or underline.
bool begins_extended_colour(const std::string& parameter) {
    return parameter == "38" || parameter == "48" || parameter == "58";
}

// Not every terminal knows how to take back a single attribute, but all know how to take all back.
bool takes_back(const TerminalLook& shown, const TerminalLook& wanted) {
    const std::string& others = shown[look_others];
    return wanted[look_others].compare(0, others.size(), others) != 0 ||
           std::any_of(std::begin(plain_attributes), std::end(plain_attributes),
                       [&](TerminalAttribute attribute) {
                           return !shown[attribute].empty() && wanted[attribute].empty();
                       });
}

std::string rendition_change(const TerminalLook& shown, const TerminalLook& wanted) {
    const bool takes_all_back = takes_back(shown, wanted);
    TerminalLook from = takes_all_back ? TerminalLook{} : shown;
    // Some consoles go back to their plain font too when they take all back.
    if (wanted[look_font] != line_font)
        from[look_font] = shown[look_font];
    std::string parameters;
    for (const TerminalAttribute attribute :
         {look_bold, look_foreground, look_background, look_font}) {
        if (from[attribute] != wanted[attribute])
            parameters += ";" + wanted[attribute];
    }
    parameters += wanted[look_others].substr(from[look_others].size());
    if (takes_all_back)
        return "\x1b[" + parameters + "m";
    return parameters.empty() ? "" : "\x1b[" + parameters.substr(1) + "m";
}

}  // namespace

TerminalLook unknown_terminal_look() {
    TerminalLook look;
    look[look_others] = "unknown";
    return look;
}

void take_rendition(TerminalLook& look, const std::string& parameters) {
    for (size_t at = 0; at <= parameters.size();) {
        const size_t end = std::min(parameters.find(';', at), parameters.size());
        const std::string parameter = parameters.substr(at, end - at);
        if (begins_extended_colour(parameter)) {
            look[look_others] += ";" + parameters.substr(at);
            return;
        }
        take_parameter(look, parameter);
        at = end + 1;
    }
}

std::string look_change(const TerminalLook& shown, const TerminalLook& wanted) {
    std::string change = rendition_change(shown, wanted);
    if (wanted[look_letters] != shown[look_letters])
        change += wanted[look_letters];
    // A font puts a Linux console back to letters.
    if (wanted[look_shift] != shown[look_shift] || wanted[look_font] != shown[look_font])
        change += wanted[look_shift];
    return change;
}

bool differ_in_boldness_only(const TerminalLook& one, const TerminalLook& other) {
    return one[look_foreground] == other[look_foreground] &&
           one[look_background] == other[look_background] && one[look_others] == other[look_others];
}
