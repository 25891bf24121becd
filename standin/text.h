#pragma once

#include <string>
#include <vector>

/// `text` without the spaces, tabs and line ends around it.
std::string trimmed(const std::string& text);

/// The words of `text`: what stands between spaces and tabs. Empty when there is none.
std::vector<std::string> split_words(const std::string& text);

/// The lines of `text` without their line feeds; a last line without one counts as well.
std::vector<std::string> lines_of(const std::string& text);

/// What is left of `line` from its word number `index` (the first is 0) on, spaces kept; empty when
/// there are not so many words.
std::string rest_from_word(const std::string& line, std::size_t index);

/// `words` with one space between them.
std::string joined(const std::vector<std::string>& words);

/// True when `text` begins with `start`.
bool begins_with(const std::string& text, const std::string& start);

/// True when `text` holds a byte below 32 or byte 127.
bool has_control_characters(const std::string& text);

/// True when `name` is one of `names`.
bool contains(const std::vector<std::string>& names, const std::string& name);

/// Reads all of `text` as a whole decimal number of `least` to `most` into `value`; false, with
/// `value` untouched, when it is anything else.
bool parse_whole(const std::string& text, long least, long most, long& value);
