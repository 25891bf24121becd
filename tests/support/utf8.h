#pragma once

#include <cstdint>
#include <string>

/// One Unicode character (at most U+10FFFF) in UTF-8.
std::string to_utf8(uint32_t character);
