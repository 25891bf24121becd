#pragma once

#include <string>

/// What a program writes to a terminal falls into units: a character in UTF-8, a control character,
/// an escape sequence. Returns how many bytes the unit that begins at `at` has; 0 if the text ends
/// within it. A sequence or character that is cut short by another unit ends before that.
size_t unit_length(const std::string& text, size_t at);

/// Output as plain text: escape sequences and control characters other than newline and tab are
/// left out, so that the "\r\n" which a terminal driver makes of a newline is a newline again.
std::string plain_text(const std::string& output);

/// Prepares output that arrives in pieces for libvterm 0.1.4.
class OutputFilter {
  public:
    /// `linux_console`: the output is for one.
    explicit OutputFilter(bool linux_console) : linuxConsole(linux_console) {}

    /// The next piece as libvterm understands it. A unit that is not complete at its end is kept
    /// for the next call.
    std::string filter(const std::string& piece);

  private:
    std::string prepared(const std::string& unit);

    bool linuxConsole;
    std::string incomplete;
    std::string last;  // the character before; empty after a control character
};
