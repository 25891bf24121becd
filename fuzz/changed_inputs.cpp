#include "fuzz/changed_inputs.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t longest_input = 4096;
constexpr std::size_t longest_piece = 300;
constexpr std::size_t most_changes = 8;

}  // namespace

ChangedInputs::ChangedInputs(std::vector<std::string> seeds) : seeds(std::move(seeds)) {}

std::string ChangedInputs::next() {
    std::string input = seeds[below(seeds.size())];
    for (std::size_t changes = 1 + below(most_changes); changes > 0; --changes)
        change(input);
    input.resize(std::min(input.size(), longest_input));
    return input;
}

std::size_t ChangedInputs::below(std::size_t limit) {
    return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
}

std::string ChangedInputs::pieceOfSeed() {
    const std::string& seed = seeds[below(seeds.size())];
    return seed.substr(below(seed.size() + 1), 1 + below(longest_piece));
}

void ChangedInputs::change(std::string& input) {
    const std::size_t at = below(input.size() + 1);
    const auto byte = static_cast<char>(below(256));
    switch (below(6)) {
        case 0:
            input.erase(at, 1 + below(longest_piece));
            break;
        case 1:
            input.insert(at, 1, byte);
            break;
        case 2:
            input.insert(at, 1 + below(longest_piece), byte);
            break;
        case 3:
            input.insert(at, pieceOfSeed());
            break;
        case 4:
            input.replace(at, 1, 1, byte);
            break;
        default:
            input.erase(at, 1);
    }
}
