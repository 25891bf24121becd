#include <cstdio>

#include "options.h"
#include "program.h"

int main(int argument_count, char** arguments) {
    standin::Options options;
    std::string problem;
    if (!standin::parse_options(argument_count, arguments, options, problem)) {
        std::fprintf(stderr, "teluma: %s\n", problem.c_str());
        return 2;
    }
    return standin::run_program(options);
}
