#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include "tools/bench/parts.h"
#include "tools/bench/tables.h"

/// bench_wizard PART [ARGUMENT...]: a part of ./bench, which says what it measures. `tables` reads
/// samples and prints the tables; the others print samples and are to be run as the superuser of a
/// sandbox with the stand-in server installed.

namespace {

using Arguments = std::vector<std::string>;

struct Part {
    size_t argument_count;
    std::function<void(const Arguments&)> run;
};

const std::map<std::string, Part> parts{
    // WIZARD FLOOR ROUNDS
    {"compare", {3, [](const Arguments& all) { compare(all[0], all[1], std::stoi(all[2])); }}},
    // WIZARD FLOOR
    {"idle", {2, [](const Arguments& all) { compare_idleness(all[0], all[1]); }}},
    // WIZARD ROWS ROUNDS
    {"list",
     {3, [](const Arguments& all) { measure_list(all[0], std::stoi(all[1]), std::stoi(all[2])); }}},
    // WIZARD
    {"walk", {1, [](const Arguments& all) { measure_size_and_walk(all[0]); }}},
    {"apply", {1, [](const Arguments& all) { measure_apply_time(all[0]); }}},
    {"calls", {1, [](const Arguments& all) { count_apply_calls(all[0]); }}},
    {"tables", {0, [](const Arguments&) { std::cout << all_tables(read_samples(std::cin)); }}},
};

}  // namespace

int main(int argument_count, char** arguments) {
    const Arguments given(arguments + 1, arguments + argument_count);
    const auto part = given.empty() ? parts.end() : parts.find(given[0]);
    if (part == parts.end() || part->second.argument_count != given.size() - 1) {
        std::fprintf(stderr, "Usage: bench_wizard PART [ARGUMENT...]\n");
        return 2;
    }
    setenv("TERM", "xterm-256color", 1);
    setenv("LC_ALL", "C.UTF-8", 1);
    unsetenv("LINES");
    unsetenv("COLUMNS");
    try {
        part->second.run({given.begin() + 1, given.end()});
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "bench_wizard %s: %s\n", given[0].c_str(), failure.what());
        return 1;
    }
    return 0;
}
