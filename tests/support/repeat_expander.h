#pragma once

#include <string>

/// Writes the terminal command "repeat the character before" (ESC [ NUMBER b) out in full, in a
/// stream that arrives in pieces: libvterm 0.1.4 wraps to the next line when one column is left
/// behind the repeated characters.
class RepeatExpander {
  public:
    /// The next piece, expanded. An escape sequence that is not complete at its end is kept for the
    /// next call.
    std::string expand(const std::string& piece);

  private:
    void takePlainByte(char byte, std::string& output);
    void takeSequenceByte(char byte, std::string& output);
    void endSequence(std::string& output);

    std::string sequence;  // the escape sequence so far; empty outside
    std::string last;      // the character before; empty behind a control character
};
