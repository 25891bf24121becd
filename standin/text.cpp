#include "text.h"

#include <algorithm>
#include <charconv>
#include <sstream>

namespace {

const char* const spaces = " \t";

std::vector<std::string> split(const std::string& text, char divider) {
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, divider);) parts.push_back(part);
    return parts;
}

}  // namespace

std::string trimmed(const std::string& text) {
    const char* const edges = " \t\r\n";
    const std::size_t first = text.find_first_not_of(edges);
    return first == std::string::npos
               ? ""
               : text.substr(first, text.find_last_not_of(edges) - first + 1);
}

std::vector<std::string> split_words(const std::string& text) {
    std::string spaced = text;
    std::replace(spaced.begin(), spaced.end(), '\t', ' ');
    std::vector<std::string> words = split(spaced, ' ');
    words.erase(std::remove(words.begin(), words.end(), ""), words.end());
    return words;
}

std::vector<std::string> lines_of(const std::string& text) { return split(text, '\n'); }

std::string rest_from_word(const std::string& line, std::size_t index) {
    std::size_t at = line.find_first_not_of(spaces);
    for (; index > 0 && at != std::string::npos; --index)
        at = line.find_first_not_of(spaces, line.find_first_of(spaces, at));
    return at == std::string::npos ? "" : line.substr(at);
}

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
    return text;
}

bool begins_with(const std::string& text, const std::string& start) {
    return text.compare(0, start.size(), start) == 0;
}

bool has_control_characters(const std::string& text) {
    return std::any_of(text.begin(), text.end(),
                       [](unsigned char byte) { return byte < 32 || byte == 127; });
}

bool contains(const std::vector<std::string>& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

bool parse_whole(const std::string& text, long least, long most, long& value) {
    long number = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, number);
    if (read.ec != std::errc() || read.ptr != end || number < least || number > most ||
        text[0] == '-')
        return false;
    value = number;
    return true;
}
