#include "tests/support/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "tests/support/descriptor.h"

namespace {

ssize_t checked_for(ssize_t result, const std::string& path) {
    if (result < 0) throw std::system_error(errno, std::generic_category(), path);
    return result;
}

Descriptor open_file(const std::string& path, int flags, mode_t mode) {
    return Descriptor(
        static_cast<int>(checked_for(open(path.c_str(), flags | O_CLOEXEC, mode), path)));
}

}  // namespace

std::string read_file(const std::string& path) {
    const Descriptor file = open_file(path, O_RDONLY, 0);
    std::string content;
    char piece[4096];
    ssize_t length;
    while ((length = checked_for(read(file.get(), piece, sizeof piece), path)) > 0)
        content.append(piece, static_cast<size_t>(length));
    return content;
}

void write_file(const std::string& path, const std::string& content, mode_t mode) {
    const Descriptor file = open_file(path, O_WRONLY | O_CREAT | O_TRUNC, mode);
    for (size_t written = 0; written < content.size();) {
        written += static_cast<size_t>(checked_for(
            write(file.get(), content.data() + written, content.size() - written), path));
    }
    // Last, because writing takes the set-user-id bit away.
    checked_for(fchmod(file.get(), mode), path);
}

bool exists(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::exists(std::filesystem::symlink_status(path, ignored));
}

std::string link_target(const std::string& path) {
    return std::filesystem::read_symlink(path).string();
}

FileFacts file_facts(const std::string& path) {
    struct stat facts {};
    checked_for(lstat(path.c_str(), &facts), path);
    return {S_ISLNK(facts.st_mode), S_ISDIR(facts.st_mode), facts.st_mode & 07777,
            facts.st_uid,           facts.st_gid,           facts.st_size};
}

long private_directories(const std::string& parent) {
    const std::filesystem::directory_iterator begin(parent);
    return std::count_if(begin, {},
                         [](const auto& entry) { return entry.path().stem() == "teluma-wizard"; });
}

TempDir::TempDir() : directory(std::filesystem::temp_directory_path() / "teluma-test-XXXXXX") {
    if (mkdtemp(directory.data()) == nullptr)
        throw std::system_error(errno, std::generic_category(), directory);
}

TempDir::~TempDir() {
    std::error_code ignored;
    std::filesystem::remove_all(directory, ignored);
}
