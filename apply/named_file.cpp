#include "apply/named_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "wizard/system/signal_gate.h"

namespace {

bool is_roots(const struct stat& facts) { return facts.st_uid == 0 || facts.st_uid == geteuid(); }

bool only_root_writes(int directory) {
    struct stat facts {};
    return fstat(directory, &facts) == 0 && is_roots(facts) &&
           (facts.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

// The way along a path, from one directory to the next.
class Walk {
  public:
    explicit Walk(std::string path) : rest(std::move(path)) {
        if (!rest.empty()) enter(AT_FDCWD, rest[0] == '/' ? "/" : ".");
    }

    // Walks up to the last name. Returns false when there is no way; whether anything has the last
    // name shows in `facts`.
    bool arrives();

    Descriptor directory;  // where `name` stands
    std::string name;      // no link
    struct stat facts {};  // of what has the name; all zero where nothing has it

  private:
    void enter(int from, const char* where) {
        directory = Descriptor(
            openat(from, where, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    }

    void takeName();
    bool follow();

    std::string rest;  // of the path, after `name`
};

void Walk::takeName() {
    rest.erase(0, rest.find_first_not_of('/'));
    name = rest.substr(0, rest.find('/'));
    rest.erase(0, name.size());
    if (name.empty()) name = ".";
}

bool Walk::follow() {
    char target[4096];  // PATH_MAX, which not every system defines
    if (!is_roots(facts) || !only_root_writes(directory.get())) return false;
    const ssize_t length = readlinkat(directory.get(), name.c_str(), target, sizeof(target));
    if (length <= 0 || static_cast<size_t>(length) == sizeof(target)) return false;
    rest.insert(0, target, static_cast<size_t>(length));
    if (rest[0] == '/') enter(AT_FDCWD, "/");
    return true;
}

bool Walk::arrives() {
    int links_left = 40;  // as many as Linux follows, path_resolution(7)
    while (directory.isOpen()) {
        takeName();
        facts = {};
        const bool found = fstatat(directory.get(), name.c_str(), &facts, AT_SYMLINK_NOFOLLOW) == 0;
        if (found && S_ISLNK(facts.st_mode)) {
            if (links_left-- == 0 || !follow()) return false;
        } else if (rest.empty()) {
            return true;
        } else {
            enter(directory.get(), name.c_str());
        }
    }
    return false;
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
    Walk walk(path);
    // Only to look at it might do something to a device.
    if (!walk.arrives() || !S_ISREG(walk.facts.st_mode)) return {};
    const int directory = walk.directory.get();
    Descriptor file = open_once_given_back(directory, walk.name.c_str(),
                                           flags | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    struct stat facts {};
    if (!file.isOpen() || fstat(file.get(), &facts) == -1 || !S_ISREG(facts.st_mode)) return {};
    if (facts.st_nlink <= 1 || only_root_writes(directory)) return file;
    errno = EMLINK;
    return {};
}

Descriptor open_named_directory(const std::string& path) {
    Walk walk(path + "/.");
    return walk.arrives() ? std::move(walk.directory) : Descriptor();
}

bool is_open_as(const struct stat& facts, int descriptor) {
    struct stat open {};
    return fstat(descriptor, &open) == 0 && open.st_dev == facts.st_dev &&
           open.st_ino == facts.st_ino;
}

bool leads_to(const char* path, int descriptor) {
    Walk walk(path);
    return walk.arrives() && is_open_as(walk.facts, descriptor);
}

bool leads_into(const char* path, int descriptor, const std::string& directory) {
    Walk walk(path);
    Walk place(directory + "/.");
    return walk.arrives() && is_open_as(walk.facts, descriptor) && place.arrives() &&
           is_open_as(place.facts, walk.directory.get());
}

std::string directory_of(const std::string& path) {
    const size_t slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}
