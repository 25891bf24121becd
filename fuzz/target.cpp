#include "fuzz/target.h"

#include <algorithm>
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

FuzzInput::FuzzInput(const std::uint8_t* bytes, std::size_t count)
    : left(reinterpret_cast<const char*>(bytes), count) {}

int FuzzInput::takeNumber(int least, int most) {
    const std::string byte = takeText(1);
    const int number = byte.empty() ? 0 : static_cast<unsigned char>(byte[0]);
    return least + number % (most - least + 1);
}

std::string FuzzInput::takeText(std::size_t count) {
    std::string text = left.substr(0, count);
    left.erase(0, text.size());
    return text;
}

std::string FuzzInput::takePrintable(std::size_t count) {
    std::string text = takeText(count);
    std::transform(text.begin(), text.end(), text.begin(), [](char character) {
        constexpr int printable = '~' - ' ' + 1;
        const int code = static_cast<unsigned char>(character);
        return static_cast<char>(' ' + (code + printable - ' ') % printable);
    });
    return text;
}

std::string c_text(const std::string& bytes) { return bytes.substr(0, bytes.find('\0')); }

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
