#include "options.h"

#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>

namespace standin {

namespace {

/// The daemon leaves its current directory, so a relative path would lead elsewhere.
bool make_absolute(std::string& path) {
    char resolved[PATH_MAX];
    if (realpath(path.c_str(), resolved) == nullptr) {
        return false;
    }
    path = resolved;
    return true;
}

}  // namespace

bool parse_options(int argument_count, char** arguments, Options& options, std::string& problem) {
    const char* const usage = "usage: teluma [-f] [-r DIRECTORY] | [-r DIRECTORY] -A PASSWORD";
    int option = 0;
    while ((option = getopt(argument_count, arguments, "A:fr:")) != -1) {
        switch (option) {
            case 'A':
                options.password = optarg;
                break;
            case 'f':
                options.foreground = true;
                break;
            case 'r':
                options.run_directory = optarg;
                break;
            default:
                problem = usage;
                return false;
        }
    }
    if (optind != argument_count) {
        problem = usage;
        return false;
    }
    if (!make_absolute(options.run_directory)) {
        problem = options.run_directory + ": " + std::strerror(errno);
        return false;
    }
    return true;
}

}  // namespace standin
