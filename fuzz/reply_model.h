#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

/// What the wizard has to make of the bytes that a server sends, told once more in the plainest
/// way: all of them are known beforehand, and the connection ends after them.
class ReplyModel {
  public:
    explicit ReplyModel(std::string bytes);

    /// How many of the bytes have been read.
    std::size_t position() const { return at; }

    /// The next line or prompt up to its first zero byte; nothing where none can be read.
    std::optional<std::string> line();

    /// All lines up to the first one that holds `end`; nothing when there is none.
    std::optional<std::vector<std::string>> linesUpTo(const std::string& end);

    /// Whether the next command succeeds.
    bool command();

  private:
    std::string bytes;
    std::size_t at = 0;
};

/// Whether one of the lines holds `part`.
bool any_holds(const std::vector<std::string>& lines, const std::string& part);
