// The main program of a fuzz target where there is no libFuzzer:
//
//     NAME_fuzz SEEDS RUNS
//
// gives the target each file of the directory SEEDS, or the file SEEDS, and then RUNS changed ones,
// the same in every run.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/files.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count);

namespace {

// Makes changed inputs out of seeds, of which there must be one.
class ChangedInputs {
  public:
    explicit ChangedInputs(std::vector<std::string> seeds) : seeds(std::move(seeds)) {}

    // The next input: one of the seeds, changed at a few places.
    std::string next() {
        constexpr std::size_t longest_input = 4096;
        constexpr std::size_t most_changes = 8;
        std::string input = anySeed();
        for (std::size_t changes = 1 + below(most_changes); changes > 0; --changes) change(input);
        return input.substr(0, longest_input);
    }

  private:
    std::size_t below(std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
    }

    const std::string& anySeed() { return seeds[below(seeds.size())]; }

    void change(std::string& input) {
        constexpr std::size_t longest_piece = 300;
        const std::size_t at = below(input.size() + 1);
        const std::size_t length = below(2) == 0 ? 1 : 1 + below(longest_piece);
        const auto byte = static_cast<char>(below(256));
        const std::string& seed = anySeed();
        switch (below(4)) {
            case 0:
                input.erase(at, length);
                break;
            case 1:
                input.insert(at, length, byte);
                break;
            case 2:
                input.insert(at, seed.substr(below(seed.size() + 1), length));
                break;
            default:
                input.replace(at, 1, 1, byte);
        }
    }

    const std::vector<std::string> seeds;
    std::minstd_rand random;
};

std::vector<std::string> read_seeds(const std::string& path) {
    if (!std::filesystem::is_directory(path)) return {read_file(path)};
    std::vector<std::string> seeds;
    for (const auto& entry : std::filesystem::directory_iterator(path))
        seeds.push_back(read_file(entry.path()));
    // Whatever the order of the directory.
    std::sort(seeds.begin(), seeds.end());
    return seeds;
}

void give(const std::string& input) {
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}

}  // namespace

int main(int count, char** arguments) {
    const std::vector<std::string> seeds =
        count == 3 ? read_seeds(arguments[1]) : std::vector<std::string>();
    if (seeds.empty()) {
        std::fprintf(stderr, "usage: %s SEEDS RUNS\n", arguments[0]);
        return 2;
    }
    const int runs = std::atoi(arguments[2]);
    for (const std::string& seed : seeds) give(seed);
    ChangedInputs changed(seeds);
    for (int run = 0; run < runs; ++run) give(changed.next());
    std::printf("%zu seeds and %d changed inputs\n", seeds.size(), runs);
}
