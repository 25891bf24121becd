#include "fuzz/require.h"

#include <cstdio>
#include <cstdlib>

namespace {

std::string escaped(const std::string& text) {
    std::string printable;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        char code[5];
        std::snprintf(code, sizeof(code), "\\x%02x", byte);
        printable += byte < ' ' || byte > '~' || byte == '\\' ? code : std::string(1, character);
    }
    return printable;
}

}  // namespace

void require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

void require_equal(const std::string& actual, const std::string& expected, const char* what) {
    if (actual != expected)
        std::fprintf(stderr, "expected: %s\nis:       %s\n", escaped(expected).c_str(),
                     escaped(actual).c_str());
    require(actual == expected, what);
}
