#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>

#include "tests/support/files.h"
#include "tools/bench/apply_cost.h"
#include "tools/bench/comparison.h"
#include "tools/bench/list_growth.h"
#include "tools/bench/table.h"
#include "tools/bench/walk.h"

/// bench_wizard PART WIZARD [FLOOR|ROWS]: prints a part of ./bench's
/// tables. To be run as the superuser of a sandbox with the stand-in server installed.

namespace {

void run(const std::string& part, const std::string& wizard, const std::string& detail) {
    if (part == "compare") {
        compare(wizard, detail);
    } else if (part == "list") {
        measure_list(wizard, detail);
    } else if (part == "apply") {
        measure_apply_time(wizard);
    } else if (part == "calls") {
        count_apply_calls(wizard);
    } else {
        print_own("size of the executable, bytes",
                  number(static_cast<double>(file_facts(wizard).size), 0));
        measure_walk(wizard);
    }
}

}  // namespace

int main(int argument_count, char** arguments) {
    if (argument_count < 3) {
        std::fprintf(stderr,
                     "Usage: bench_wizard compare|list|own|apply|calls WIZARD [FLOOR|ROWS]\n");
        return 2;
    }
    setenv("TERM", "xterm-256color", 1);
    setenv("LC_ALL", "C.UTF-8", 1);
    unsetenv("LINES");
    unsetenv("COLUMNS");
    try {
        run(arguments[1], arguments[2], argument_count > 3 ? arguments[3] : "");
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "bench_wizard: %s\n", failure.what());
        return 1;
    }
    return 0;
}
