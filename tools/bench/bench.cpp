#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include "tools/bench/comparison.h"
#include "tools/bench/rows.h"
#include "tools/bench/samples.h"
#include "tools/bench/table.h"
#include "tools/bench/wizard_alone.h"

/// bench_wizard PART [ARGUMENT...]: a part of ./bench, which says what it measures. `tables` reads
/// samples and prints the tables; the others print samples and are to be run as the superuser of a
/// sandbox with the stand-in server installed.

namespace {

using Arguments = std::vector<std::string>;

struct Part {
    size_t argument_count;
    std::function<void(const Arguments&)> run;
};

void print_tables() {
    const std::vector<Sample> samples = read_samples(std::cin);
    const std::string with_targets =
        comparison_table(compared_rows, samples) + "\n" + own_table(own_rows, samples);
    std::cout << with_targets << "\n"
              << reached_count(with_targets) << "\n\n"
              << list_table(list_rows, samples) << "\n"
              << column_table(calls_row, "step of an apply run", "system calls", samples);
}

const std::map<std::string, Part>& parts() {
    static const std::map<std::string, Part> table{
        {"compare",  // WIZARD FLOOR ROUNDS
         {3, [](const Arguments& given) { compare(given[0], given[1], std::stoi(given[2])); }}},
        {"idle",  // WIZARD FLOOR
         {2, [](const Arguments& given) { compare_idleness(given[0], given[1]); }}},
        {"walk",  // WIZARD
         {1, [](const Arguments& given) { measure_size_and_walk(given[0]); }}},
        {"list",  // WIZARD ROWS ROUNDS
         {3,
          [](const Arguments& given) {
              measure_list(given[0], std::stoi(given[1]), std::stoi(given[2]));
          }}},
        {"apply",  // WIZARD
         {1, [](const Arguments& given) { measure_apply_time(given[0]); }}},
        {"calls",  // WIZARD
         {1, [](const Arguments& given) { count_apply_calls(given[0]); }}},
        {"tables", {0, [](const Arguments&) { print_tables(); }}},
    };
    return table;
}

}  // namespace

int main(int argument_count, char** arguments) {
    const Arguments given(arguments + 1, arguments + argument_count);
    const auto part = given.empty() ? parts().end() : parts().find(given[0]);
    if (part == parts().end() || part->second.argument_count != given.size() - 1) {
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
