#pragma once

#include <cstdint>
#include <string>

/// One Unicode character (at most U+10FFFF) in UTF-8.
std::string to_utf8(uint32_t character);

/// Leaves out of a stream in UTF-8 the beginnings of characters that are not brought to an end.
class BrokenCharacterFilter {
  public:
    /// What is left of the next piece of the stream. The beginning of a character is kept until the
    /// rest of it comes.
    std::string filter(const std::string& piece);

  private:
    std::string held_back;
};
