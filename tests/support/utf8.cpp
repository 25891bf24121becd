#include "tests/support/utf8.h"

namespace {

bool continues_character(char byte) {
    return (byte & '\xc0') == '\x80';
}

size_t character_length(char first_byte) {
    const auto value = static_cast<unsigned char>(first_byte);
    return value < 0xc0 ? 1 : value < 0xe0 ? 2 : value < 0xf0 ? 3 : 4;
}

}  // namespace

std::string to_utf8(uint32_t character) {
    if (character < 0x80)
        return {static_cast<char>(character)};
    int following = character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
    const uint32_t length_mark = following == 1 ? 0xc0 : following == 2 ? 0xe0 : 0xf0;
    std::string bytes{static_cast<char>(length_mark | (character >> (6 * following)))};
    while (following-- > 0)
        bytes += static_cast<char>(0x80 | ((character >> (6 * following)) & 0x3f));
    return bytes;
}

std::string BrokenCharacterFilter::filter(const std::string& piece) {
    std::string output;
    for (const char byte : piece) {
        if (!continues_character(byte))
            held_back.clear();
        held_back += byte;
        if (held_back.size() == character_length(held_back.front())) {
            output += held_back;
            held_back.clear();
        }
    }
    return output;
}
