#pragma once

#include <random>
#include <string>
#include <vector>

/// Makes changed inputs out of seeds, the same ones in every run.
class ChangedInputs {
  public:
    /// `seeds` must not be empty.
    explicit ChangedInputs(std::vector<std::string> seeds);

    /// The next input: one of the seeds, changed at a few places.
    std::string next();

  private:
    std::size_t below(std::size_t limit);
    std::string pieceOfSeed();
    void change(std::string& input);

    std::vector<std::string> seeds;
    std::minstd_rand random;
};
