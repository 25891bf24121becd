#include "tools/pictures/grid.h"

#include <iterator>
#include <stdexcept>

namespace {

// Soft shades of the usual colours, in the order of their numbers.
constexpr const char* shades[] = {"#15181e", "#c0453a", "#6f9e4b", "#d0a040",
                                  "#1f3f8a", "#8f5aa8", "#3f98a8", "#e6e9ef"};

std::string shade(int colour, const char* unchosen) {
    if (colour == default_colour)
        return unchosen;
    if (colour < 0 || colour >= static_cast<int>(std::size(shades)))
        throw std::invalid_argument("there is no shade for colour " + std::to_string(colour));
    return shades[colour];
}

}  // namespace

std::string foreground_of(const Cell& cell) {
    return shade(cell.foreground, "#d8dbe2");
}

std::string background_of(const Cell& cell) {
    return shade(cell.background, "#15181e");
}

std::string escaped(const std::string& text) {
    std::string result;
    for (const char character : text) {
        switch (character) {
            case '&':
                result += "&amp;";
                break;
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            case '"':
                result += "&quot;";
                break;
            default:
                result += character;
        }
    }
    return result;
}
