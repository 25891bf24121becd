#pragma once

#include <string>
#include <vector>

namespace standin {

/// `text` without the blanks, tabs and line ends around it.
std::string trimmed(const std::string& text);

/// The words of `text`: what stands between blanks and tabs. Empty when there is none.
std::vector<std::string> split_words(const std::string& text);

/// The lines of `text` without their line feeds; a last line without one counts as well.
std::vector<std::string> split_lines(const std::string& text);

/// What is left of `line` from its word number `index` (the first is 0) on, blanks kept; empty when
/// there are not so many words.
std::string rest_from_word(const std::string& line, std::size_t index);

/// `words` with one blank between them.
std::string joined(const std::vector<std::string>& words);

/// True when `text` begins with `start`.
bool begins_with(const std::string& text, const std::string& start);

/// True when `text` holds a byte below 32 or byte 127.
bool has_control_characters(const std::string& text);

/// Reads all of `text` as a whole decimal number of `least` to `most` into `value`; false, with
/// `value` untouched, when it is anything else.
bool parse_whole(const std::string& text, long least, long most, long& value);

}  // namespace standin
