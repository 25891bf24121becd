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

// Never opens a file, or a link, that somebody else has put there.
constexpr int create_new = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;

File stream_of(Descriptor descriptor, const char* mode) {
    File stream(descriptor.isOpen() ? fdopen(descriptor.get(), mode) : nullptr);
    if (stream != nullptr) descriptor.release();
    return stream;
}

File open_copy() {
    Descriptor descriptor(open(copy_name, create_new, 0600));
    if (!descriptor.isOpen() && errno == ENOENT) {
        // Somebody has removed the directory, as one who tidies up.
        enter_private_directory();
        descriptor = Descriptor(open(copy_name, create_new, 0600));
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

bool copy_bytes(int from, int to) {
    char block[65536];
    ssize_t count = lseek(from, 0, SEEK_SET) == 0 ? 0 : -1;
    while (count != -1 && (count = read(from, block, sizeof(block))) > 0) {
        // Less is written to a file only where there is no more room.
        if (write(to, block, static_cast<size_t>(count)) != count) return false;
        let_signals_in();
    }
    return count == 0;
}

// Makes the copy and gives it its name when it is complete. The owner comes first: what another
// user has written would be root's word in a file of root's, to which that user may give the pid
// file's name. Returns false when any of it failed, or when another wizard's copy has the name
// already, or has taken the place of this one, which it took for one that was left over.
bool make_copy(int from, const std::string& name) {
    const int directory = unfinished.directory.get();
    struct stat facts {};
    Descriptor to(openat(directory, unfinished.name.c_str(), create_new, 0600));
    return to.isOpen() && fstat(from, &facts) == 0 &&
           fchown(to.get(), facts.st_uid, facts.st_gid) == 0 && copy_bytes(from, to.get()) &&
           fchmod(to.get(), facts.st_mode & 01777) == 0 && fsync(to.get()) == 0 &&
           fstat(to.get(), &facts) == 0 && facts.st_nlink > 0 && to.close() &&
           linkat(directory, unfinished.name.c_str(), directory, name.c_str(), 0) == 0;
}

}  // namespace

File open_original(const char* path) { return stream_of(open_named_file(path, O_RDWR), "r+"); }

int keep_copy_beside(int file, const char* path) {
    const std::string copy = std::string(path) + ".beforewizard";
    const std::string name = copy.substr(copy.rfind('/') + 1);
    unfinished.name = name + ".new";
    unfinished.directory = open_named_directory(directory_of(path));
    struct stat facts {};
    const auto is_there = [&] {
        return fstatat(unfinished.directory.get(), name.c_str(), &facts, AT_SYMLINK_NOFOLLOW) == 0;
    };
    // What a run that was killed has left unfinished.
    unfinished.remove();
    if (!is_there() && errno == ENOENT) make_copy(file, name);
    const bool kept = is_there() && S_ISREG(facts.st_mode) && !is_open_as(facts, file);
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

bool FileRewrite::read(std::string& line) {
    constexpr size_t limit = 255;
    std::string next;
    let_signals_in();
    do {
        const int character = std::getc(original.get());
        if (character == EOF) break;
        next += static_cast<char>(character);
    } while (next.size() < limit && next.back() != '\n');
    if (next.empty()) return false;
    line = next;
    return true;
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
