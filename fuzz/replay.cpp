// The main program of a fuzz target where there is no libFuzzer:
//
//     NAME_fuzz SEEDS RUNS [KEPT]
//
// gives the target each file of the directory SEEDS, or the file SEEDS, and then RUNS changed ones.
// Each input is kept in the file KEPT until the next one, for whoever looks for what broke it.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "fuzz/changed_inputs.h"
#include "tests/support/files.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count);

namespace {

std::vector<std::string> read_seeds(const std::string& path) {
    if (!std::filesystem::is_directory(path))
        return {read_file(path)};
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path))
        names.push_back(entry.path());
    std::sort(names.begin(), names.end());
    std::vector<std::string> seeds;
    seeds.reserve(names.size());
    for (const std::string& name : names)
        seeds.push_back(read_file(name));
    return seeds;
}

void give(const std::string& input, const char* kept) {
    if (kept != nullptr)
        write_file(kept, input);
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 3 && count != 4) {
        std::fprintf(stderr, "usage: %s SEEDS RUNS [KEPT]\n", arguments[0]);
        return 2;
    }
    const std::vector<std::string> seeds = read_seeds(arguments[1]);
    const int runs = std::atoi(arguments[2]);
    const char* kept = arguments[3];
    if (seeds.empty()) {
        std::fprintf(stderr, "%s: no seeds\n", arguments[1]);
        return 2;
    }
    for (const std::string& seed : seeds)
        give(seed, kept);
    ChangedInputs changed(seeds);
    for (int run = 0; run < runs; ++run)
        give(changed.next(), kept);
    std::printf("%zu seeds and %d changed inputs\n", seeds.size(), runs);
}
