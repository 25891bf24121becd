#include "apply/file_rewrite.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "apply/named_file.h"
#include "apply/shell_command.h"
#include "wizard/system/private_directory.h"
#include "wizard/system/signal_gate.h"

namespace {

constexpr char copy_name[] = "temp.cfg";

File stream_of(Descriptor descriptor, const char* mode) {
    File stream(descriptor.isOpen() ? fdopen(descriptor.get(), mode) : nullptr);
    if (stream != nullptr) descriptor.release();
    return stream;
}

// Never opens a file, or a link, that somebody else has put there.
Descriptor create_copy() {
    return Descriptor(open(copy_name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
}

File open_copy() {
    Descriptor descriptor = create_copy();
    if (!descriptor.isOpen() && errno == ENOENT) {
        // Somebody has removed the directory, as one who tidies up.
        enter_private_directory();
        descriptor = create_copy();
    }
    const bool created = descriptor.isOpen();
    File copy = stream_of(std::move(descriptor), "w");
    if (created && copy == nullptr) unlink(copy_name);
    return copy;
}

// The copy that is being made: the directory that it is to stand in, and the name that it has there
// until it is complete. What there is of it goes with this object, at the latest when the program
// ends.
struct UnfinishedCopy {
    Descriptor directory;
    std::string name;

    ~UnfinishedCopy() { remove(); }
    void remove() const {
        if (directory.isOpen()) unlinkat(directory.get(), name.c_str(), 0);
    }
};

UnfinishedCopy unfinished;

bool write_all(int descriptor, const char* bytes, size_t count) {
    while (count > 0) {
        const ssize_t written = write(descriptor, bytes, count);
        if (written <= 0) return false;
        bytes += written;
        count -= static_cast<size_t>(written);
    }
    return true;
}

bool copy_bytes(int from, int to) {
    char block[65536];
    ssize_t count = lseek(from, 0, SEEK_SET);
    while (count != -1 && (count = read(from, block, sizeof(block))) > 0) {
        if (!write_all(to, block, static_cast<size_t>(count))) return false;
        let_signals_in();
    }
    return count == 0;
}

bool has_a_name(int file) {
    struct stat facts {};
    return fstat(file, &facts) == 0 && facts.st_nlink > 0;
}

// Makes the unfinished copy. The owner comes first: what another user has written would be root's
// word in a file of root's, to which that user may give the pid file's name. Returns false when any
// of it failed, or when another wizard has taken the copy for one that was left over.
bool copy_file(int from) {
    struct stat facts {};
    Descriptor to(openat(unfinished.directory.get(), unfinished.name.c_str(),
                         O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
    return to.isOpen() && fstat(from, &facts) == 0 &&
           fchown(to.get(), facts.st_uid, facts.st_gid) == 0 && copy_bytes(from, to.get()) &&
           fchmod(to.get(), facts.st_mode & 01777) == 0 && fsync(to.get()) == 0 &&
           has_a_name(to.get()) && to.close();
}

// Whether a file, not a link or a pipe, has the name, and not the very one that `file` has open.
bool is_other_file(const std::string& name, int file) {
    struct stat facts {};
    return fstatat(unfinished.directory.get(), name.c_str(), &facts, AT_SYMLINK_NOFOLLOW) == 0 &&
           S_ISREG(facts.st_mode) && !is_open_as(facts, file);
}

bool keep_in_directory(int file, const std::string& name) {
    const int directory = unfinished.directory.get();
    struct stat facts {};
    // What a run that was killed has left unfinished.
    unfinished.remove();
    if (fstatat(directory, name.c_str(), &facts, AT_SYMLINK_NOFOLLOW) == -1 &&
        (errno != ENOENT || !copy_file(file) ||
         // Another wizard's copy may have come first: it stays.
         (linkat(directory, unfinished.name.c_str(), directory, name.c_str(), 0) == -1 &&
          errno != EEXIST)))
        return false;
    return is_other_file(name, file);
}

}  // namespace

bool read_file_line(std::FILE* file, std::string& line) {
    std::string next;
    let_signals_in();
    while (next.size() < file_line_limit && (next.empty() || next.back() != '\n')) {
        const int character = std::getc(file);
        if (character == EOF) break;
        next += static_cast<char>(character);
    }
    if (next.empty()) return false;
    line = next;
    return true;
}

File open_original(const char* path) { return stream_of(open_named_file(path, O_RDWR), "r+"); }

int keep_copy_beside(int file, const char* path) {
    const std::string copy = std::string(path) + ".beforewizard";
    const std::string name = copy.substr(copy.rfind('/') + 1);
    unfinished.name = name + ".new";
    unfinished.directory = open_named_directory(directory_of(path));
    const bool kept = unfinished.directory.isOpen() && keep_in_directory(file, name);
    unfinished.remove();
    unfinished.directory.close();
    return kept ? 0 : 1;
}

FileRewrite::FileRewrite(const char* file_name)
    : path(file_name), original(open_original(file_name)) {
    if (original != nullptr) copy = open_copy();
}

FileRewrite::~FileRewrite() {
    // A copy that is left would bar the way to the next one.
    if (copy != nullptr) unlink(copy_name);
}

int FileRewrite::install() {
    const std::string name = copy_name;
    const std::string copy_back = "cp " + name + " " + as_shell_word(path) + " >> /dev/null";
    const bool written = std::ferror(copy.get()) == 0;
    const bool closed = std::fclose(copy.release()) == 0;
    const bool installs = std::ferror(original.get()) == 0 && written && closed &&
                          copy_back.size() <= shell_command_limit &&
                          keep_copy_beside(file(), path) == 0 && leads_to(path, file());
    if (installs) run_file_command(copy_back, file());
    run_file_command("rm " + name + " >> /dev/null");
    unlink(copy_name);
    return installs && leads_to(path, file()) ? 0 : 1;
}
