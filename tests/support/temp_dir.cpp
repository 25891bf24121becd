#include "tests/support/temp_dir.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

TempDir::TempDir() : directory(std::filesystem::temp_directory_path() / "teluma-test-XXXXXX") {
    if (mkdtemp(directory.data()) == nullptr)
        throw std::system_error(errno, std::generic_category(), directory);
}

TempDir::~TempDir() {
    std::error_code ignored;
    std::filesystem::remove_all(directory, ignored);
}
