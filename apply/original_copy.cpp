#include "apply/original_copy.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string>

namespace {

bool write_all(int descriptor, const char* bytes, size_t count) {
    while (count > 0) {
        const ssize_t written = write(descriptor, bytes, count);
        if (written <= 0)
            return false;
        bytes += written;
        count -= static_cast<size_t>(written);
    }
    return true;
}

bool copy_bytes(int from, int to) {
    char block[65536];
    ssize_t count = 0;
    while ((count = read(from, block, sizeof(block))) > 0) {
        if (!write_all(to, block, static_cast<size_t>(count)))
            return false;
    }
    return count == 0;
}

// The mode comes last: changing the owner takes the set-user-ID bits away.
bool copy_file(int from, int to) {
    struct stat facts {};
    return fstat(from, &facts) == 0 && copy_bytes(from, to) &&
           fchown(to, facts.st_uid, facts.st_gid) == 0 && fchmod(to, facts.st_mode & 07777) == 0 &&
           fsync(to) == 0;
}

// Copies `path` into the new file `copy`. Returns false when any of it failed.
bool copy_to_new_file(const char* path, const std::string& copy) {
    const int from = open(path, O_RDONLY | O_CLOEXEC);
    if (from == -1)
        return false;
    const int to = open(copy.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
    const bool copied = to != -1 && copy_file(from, to);
    close(from);
    return to != -1 && close(to) == 0 && copied;
}

// Whether `facts` are of a file, not of a link or a pipe, and not of the file that `path` names.
bool is_other_file(const struct stat& facts, const char* path) {
    struct stat present {};
    return S_ISREG(facts.st_mode) && stat(path, &present) == 0 &&
           (facts.st_dev != present.st_dev || facts.st_ino != present.st_ino);
}

}  // namespace

int keep_original(const char* path) {
    const std::string original = std::string(path) + ".beforewizard";
    struct stat facts {};
    if (lstat(original.c_str(), &facts) == 0)
        return is_other_file(facts, path) ? 0 : 1;
    if (errno != ENOENT)
        return 1;
    // What a run that was killed has left unfinished.
    const std::string unfinished = original + ".new";
    unlink(unfinished.c_str());
    const bool kept = copy_to_new_file(path, unfinished) &&
                      std::rename(unfinished.c_str(), original.c_str()) == 0;
    if (!kept)
        unlink(unfinished.c_str());
    return kept ? 0 : 1;
}
