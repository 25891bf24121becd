#include "text.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>

namespace standin {

namespace {
const char* const blanks = " \t";
}  // namespace

std::string trimmed(const std::string& text) {
    const char* const edges = " \t\r\n";
    const std::size_t first = text.find_first_not_of(edges);
    if (first == std::string::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(edges) - first + 1);
}

std::vector<std::string> split_words(const std::string& text) {
    std::vector<std::string> words;
    std::size_t at = text.find_first_not_of(blanks);
    while (at != std::string::npos) {
        const std::size_t end = std::min(text.find_first_of(blanks, at), text.size());
        words.push_back(text.substr(at, end - at));
        at = text.find_first_not_of(blanks, end);
    }
    return words;
}

std::vector<std::string> split_lines(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        lines.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return lines;
}

std::string rest_from_word(const std::string& line, std::size_t index) {
    std::size_t at = line.find_first_not_of(blanks);
    for (; index > 0 && at != std::string::npos; --index) {
        at = line.find_first_not_of(blanks, line.find_first_of(blanks, at));
    }
    return at == std::string::npos ? std::string() : line.substr(at);
}

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

bool begins_with(const std::string& text, const std::string& start) {
    return text.compare(0, start.size(), start) == 0;
}

bool has_control_characters(const std::string& text) {
    return std::any_of(text.begin(), text.end(), [](char character) {
        const auto byte = static_cast<unsigned char>(character);
        return byte < 32 || byte == 127;
    });
}

bool parse_whole(const std::string& text, long least, long most, long& value) {
    if (text.empty() || text.find_first_not_of("0123456789") != std::string::npos) {
        return false;
    }
    errno = 0;
    const long number = std::strtol(text.c_str(), nullptr, 10);
    if (errno != 0 || number < least || number > most) {
        return false;
    }
    value = number;
    return true;
}

}  // namespace standin
