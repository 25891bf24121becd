#pragma once

#include <string>

/// Output as plain text: escape sequences and control characters other than newline and tab are
/// left out, so that the "\r\n" which a terminal driver makes of a newline is a newline again.
std::string plain_text(const std::string& output);

/// Prepares output that arrives in pieces for libvterm 0.1.4.
class OutputFilter {
  public:
    /// `linux_console`: the output is for one.
    explicit OutputFilter(bool linux_console) : linuxConsole(linux_console) {}

    /// The next piece as libvterm understands it. A character or escape sequence that is not
    /// complete at its end is kept for the next call.
    std::string filter(const std::string& piece);

  private:
    std::string prepared(const std::string& unit);

    bool linuxConsole;
    std::string incomplete;
    std::string last;  // the character before; empty after a control character
};
