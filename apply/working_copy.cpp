#include "apply/working_copy.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "apply/named_file.h"
#include "apply/original_copy.h"
#include "apply/shell_command.h"
#include "wizard/system/private_directory.h"

namespace {

constexpr char name[] = "temp.cfg";

// Never opens a file, or a link, that somebody else has put there.
int create_copy() {
    return open(name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
}

}  // namespace

std::FILE* open_original(const char* path) {
    const int descriptor = open_named_file(path, O_RDWR);
    if (descriptor == -1)
        return nullptr;
    std::FILE* original = fdopen(descriptor, "r+");
    if (original == nullptr)
        close(descriptor);
    return original;
}

std::FILE* working_copy_open() {
    int descriptor = create_copy();
    if (descriptor == -1 && errno == ENOENT) {
        // Somebody has removed the directory, as one who tidies up.
        enter_private_directory();
        descriptor = create_copy();
    }
    if (descriptor == -1)
        return nullptr;
    std::FILE* copy = fdopen(descriptor, "w");
    if (copy == nullptr) {
        close(descriptor);
        unlink(name);
    }
    return copy;
}

int working_copy_install(std::FILE* copy, std::FILE* original, const char* path) {
    ShellCommand copy_back;
    ShellCommand remove;
    const int file = fileno(original);
    const bool written = std::ferror(copy) == 0;
    const bool closed = std::fclose(copy) == 0;
    const bool installs =
        std::ferror(original) == 0 && written && closed &&
        format_command(copy_back, "cp %s %s >> /dev/null", name, as_shell_word(path).c_str()) &&
        keep_original(file, path) == 0 && leads_to(path, file);
    if (installs)
        run_file_command(copy_back, file);
    if (format_command(remove, "rm %s >> /dev/null", name))
        run_file_command(remove);
    // A copy that the command has left would bar the way to the next one.
    unlink(name);
    return installs && leads_to(path, file) ? 0 : 1;
}
