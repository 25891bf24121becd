#pragma once

#include <string>

/// The part of a program's output after the last switch from the alternate to the normal screen;
/// all of it if there was none.
std::string after_alternate_screen(const std::string& output);

/// Output as plain text: escape sequences and control characters other than newline and tab are
/// left out, so that the "\r\n" which a terminal driver makes of a newline is a newline again.
std::string plain_text(const std::string& output);
