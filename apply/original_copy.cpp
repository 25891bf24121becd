#include "apply/original_copy.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>

#include "apply/named_file.h"
#include "wizard/system/signal_gate.h"

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
    if (lseek(from, 0, SEEK_SET) == -1)
        return false;
    while ((count = read(from, block, sizeof(block))) > 0) {
        if (!write_all(to, block, static_cast<size_t>(count)))
            return false;
        let_signals_in();
    }
    return count == 0;
}

// The owner comes first: what another user has written would be root's word in a file of root's,
// to which that user may give the pid file's name.
bool copy_file(int from, int to) {
    struct stat facts {};
    return fstat(from, &facts) == 0 && fchown(to, facts.st_uid, facts.st_gid) == 0 &&
           copy_bytes(from, to) && fchmod(to, facts.st_mode & 01777) == 0 && fsync(to) == 0;
}

// The copy that is being made: the directory that it is to stand in, -1 while there is none, and
// the name that it has there until it is complete.
int directory = -1;
std::string unfinished;

void remove_unfinished() {
    if (directory != -1)
        unlinkat(directory, unfinished.c_str(), 0);
}

bool has_a_name(int file) {
    struct stat facts {};
    return fstat(file, &facts) == 0 && facts.st_nlink > 0;
}

// Copies `file` into the new file `unfinished`. Returns false when any of it failed, or when
// another wizard has taken it for one that was left over.
bool copy_to_new_file(int file) {
    const int to = openat(directory, unfinished.c_str(),
                          O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
    const bool copied = to != -1 && copy_file(file, to) && has_a_name(to);
    return to != -1 && close(to) == 0 && copied;
}

// Whether a file, not a link or a pipe, has the name, and not the very one that `file` has open.
bool is_other_file(const std::string& name, int file) {
    struct stat facts {};
    struct stat present {};
    return fstatat(directory, name.c_str(), &facts, AT_SYMLINK_NOFOLLOW) == 0 &&
           S_ISREG(facts.st_mode) && fstat(file, &present) == 0 &&
           (facts.st_dev != present.st_dev || facts.st_ino != present.st_ino);
}

bool keep_in_directory(int file, const std::string& original) {
    struct stat facts {};
    // What a run that was killed has left unfinished.
    remove_unfinished();
    if (fstatat(directory, original.c_str(), &facts, AT_SYMLINK_NOFOLLOW) == -1 &&
        (errno != ENOENT || !copy_to_new_file(file) ||
         // Another wizard's copy may have come first: it stays.
         (linkat(directory, unfinished.c_str(), directory, original.c_str(), 0) == -1 &&
          errno != EEXIST)))
        return false;
    return is_other_file(original, file);
}

}  // namespace

int keep_original(int file, const char* path) {
    static const bool cleans_up = std::atexit(remove_unfinished) == 0;
    const std::string original = std::string(path) + ".beforewizard";
    directory = open_named_directory(directory_of(path));
    if (!cleans_up || directory == -1)
        return 1;
    const std::string name = original.substr(original.rfind('/') + 1);
    unfinished = name + ".new";
    const bool kept = keep_in_directory(file, name);
    remove_unfinished();
    close(directory);
    directory = -1;
    return kept ? 0 : 1;
}
