#include "tests/support/utf8.h"

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
