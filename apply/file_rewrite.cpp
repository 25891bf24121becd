#include "apply/file_rewrite.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "apply/named_file.h"
#include "apply/original_copy.h"
#include "apply/shell_command.h"
#include "wizard/system/private_directory.h"
#include "wizard/system/signal_gate.h"

namespace {

constexpr char copy_name[] = "temp.cfg";

File stream_of(Descriptor descriptor, const char* mode) {
    File stream(descriptor.isOpen() ? fdopen(descriptor.get(), mode) : nullptr);
    if (stream != nullptr)
        descriptor.release();
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
    return stream_of(std::move(descriptor), "w");
}

}  // namespace

bool read_file_line(std::FILE* file, std::string& line) {
    std::string next;
    let_signals_in();
    while (next.size() < file_line_limit && (next.empty() || next.back() != '\n')) {
        const int character = std::getc(file);
        if (character == EOF)
            break;
        next += static_cast<char>(character);
    }
    if (next.empty())
        return false;
    line = next;
    return true;
}

File open_original(const char* path) {
    return stream_of(open_named_file(path, O_RDWR), "r+");
}

FileRewrite::FileRewrite(const char* fileName) : path(fileName), original(open_original(fileName)) {
    if (original != nullptr)
        copy = open_copy();
}

FileRewrite::~FileRewrite() {
    // A copy that is left would bar the way to the next one.
    if (copy != nullptr)
        unlink(copy_name);
}

int FileRewrite::install() {
    const std::string name = copy_name;
    const std::string copy_back = "cp " + name + " " + as_shell_word(path) + " >> /dev/null";
    const bool written = std::ferror(copy.get()) == 0;
    const bool closed = std::fclose(copy.release()) == 0;
    const bool installs = std::ferror(original.get()) == 0 && written && closed &&
                          copy_back.size() <= shell_command_limit &&
                          keep_copy_beside(file(), path) == 0 && leads_to(path, file());
    if (installs)
        run_file_command(copy_back, file());
    run_file_command("rm " + name + " >> /dev/null");
    unlink(copy_name);
    return installs && leads_to(path, file()) ? 0 : 1;
}
