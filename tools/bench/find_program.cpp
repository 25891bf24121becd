#include "tools/bench/find_program.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <stdexcept>

std::string find_program(const std::string& name) {
    const char* path = std::getenv("PATH");
    std::istringstream directories(path == nullptr ? "" : path);
    std::string directory;
    while (std::getline(directories, directory, ':')) {
        std::string candidate = std::filesystem::path(directory) / name;
        if (access(candidate.c_str(), X_OK) == 0)
            return candidate;
    }
    throw std::runtime_error(name + " is not installed");
}
