#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

/// The bytes that a fuzz target is given, taken from the front. When they are used up there are
/// only zeros and empty texts.
class FuzzInput {
  public:
    FuzzInput(const std::uint8_t* bytes, std::size_t count);

    bool isEmpty() const { return left.empty(); }

    /// A number from `least` to `most`, of one byte: so at most 256 different ones.
    int takeNumber(int least, int most);

    /// The next bytes, at most `count`.
    std::string takeText(std::size_t count);

    /// The same, with each byte made a printable ASCII character, most of them themselves.
    std::string takePrintable(std::size_t count);

    /// All that is left.
    std::string takeRest() { return takeText(left.size()); }

  private:
    std::string left;
};

/// `bytes` as the text that they are to C: up to the first zero byte.
std::string c_text(const std::string& bytes);

/// Ends the process with SIGABRT, as a crash does, unless `holds`; says what has not held.
void require(bool holds, const char* what);

/// The same for two texts that must be equal; both are printed, with what can't be printed escaped.
void require_equal(const std::string& actual, const std::string& expected, const char* what);
