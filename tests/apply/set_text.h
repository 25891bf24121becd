#pragma once

#include <cstdio>
#include <string>

/// Puts a text into a field of the code under test.
template <std::size_t size>
void set_text(char (&field)[size], const std::string& text) {
    std::snprintf(field, size, "%s", text.c_str());
}
