#include "apply/named_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "wizard/system/signal_gate.h"

namespace {

bool is_roots(const struct stat& facts) { return facts.st_uid == 0 || facts.st_uid == geteuid(); }

bool only_root_writes(int directory) {
    struct stat facts {};
    return fstat(directory, &facts) == 0 && is_roots(facts) &&
           (facts.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

// Where a path leads.
struct Place {
    Descriptor directory;  // where `name` stands; empty when there is no way
    std::string name;      // no link
    struct stat facts {};  // of what has the name; all zero where nothing has it
};

Descriptor open_directory(int from, const std::string& name) {
    return Descriptor(
        openat(from, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
}

std::string take_first_name(std::string& path) {
    path.erase(0, path.find_first_not_of('/'));
    const std::string name = path.substr(0, path.find('/'));
    path.erase(0, name.size());
    return name.empty() ? "." : name;
}

// Empty for a link that is not followed.
std::string target_of(const Place& link) {
    char target[4096];  // PATH_MAX, which not every system defines
    if (!is_roots(link.facts) || !only_root_writes(link.directory.get())) return "";
    const ssize_t length =
        readlinkat(link.directory.get(), link.name.c_str(), target, sizeof(target));
    if (length <= 0 || static_cast<size_t>(length) == sizeof(target)) return "";
    return {target, static_cast<size_t>(length)};
}

Place walk(std::string path) {
    Place place;
    place.directory = open_directory(AT_FDCWD, path[0] == '/' ? "/" : ".");
    int links_left = 40;  // as many as Linux follows, path_resolution(7)
    while (place.directory.isOpen()) {
        const int directory = place.directory.get();
        place.name = take_first_name(path);
        if (fstatat(directory, place.name.c_str(), &place.facts, AT_SYMLINK_NOFOLLOW) == -1)
            place.facts = {};
        if (S_ISLNK(place.facts.st_mode)) {
            const std::string target = links_left-- == 0 ? "" : target_of(place);
            if (target.empty()) return {};
            path.insert(0, target);
            if (path[0] == '/') place.directory = open_directory(AT_FDCWD, "/");
        } else if (path.empty()) {
            return place;
        } else {
            place.directory = open_directory(directory, place.name);
        }
    }
    return {};
}

Descriptor open_once_given_back(int directory, const char* name, int flags) {
    for (int tries_left = 5;; --tries_left) {
        Descriptor file(openat(directory, name, flags));
        if (file.isOpen() || errno != EWOULDBLOCK || tries_left == 0) return file;
        sleep_seconds(1);
    }
}

}  // namespace

Descriptor open_named_file(const char* path, int flags) {
    // Of what is refused no call says why.
    errno = EACCES;
    const Place place = walk(path);
    // Only to look at it might do something to a device.
    if (!S_ISREG(place.facts.st_mode)) return {};
    const int directory = place.directory.get();
    Descriptor file = open_once_given_back(directory, place.name.c_str(),
                                           flags | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    struct stat facts {};
    if (!file.isOpen() || fstat(file.get(), &facts) == -1 || !S_ISREG(facts.st_mode)) return {};
    if (facts.st_nlink <= 1 || only_root_writes(directory)) return file;
    errno = EMLINK;
    return {};
}

Descriptor open_named_directory(const std::string& path) { return walk(path + "/.").directory; }

bool is_open_as(const struct stat& facts, int descriptor) {
    struct stat open {};
    return fstat(descriptor, &open) == 0 && open.st_dev == facts.st_dev &&
           open.st_ino == facts.st_ino;
}

bool leads_to(const char* path, int descriptor) { return is_open_as(walk(path).facts, descriptor); }

bool leads_into(const char* path, int descriptor, const std::string& directory) {
    const Place file = walk(path);
    return is_open_as(file.facts, descriptor) &&
           is_open_as(walk(directory + "/.").facts, file.directory.get());
}

std::string directory_of(const std::string& path) {
    const size_t slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}
