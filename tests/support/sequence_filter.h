#pragma once

#include <string>

/// Takes every occurrence of one byte sequence out of a stream that arrives in pieces.
class SequenceFilter {
  public:
    explicit SequenceFilter(std::string unwanted_sequence);

    /// The next piece without the sequence. What may be its beginning, at the end of the piece, is
    /// kept for the next call.
    std::string filter(const std::string& piece);

  private:
    std::string unwanted;
    std::string held_back;
};
