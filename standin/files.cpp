#include "files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <utility>

#include "wizard/base/descriptor.h"

namespace {

const mode_t owner_only = S_IRUSR | S_IWUSR;

bool write_all(int descriptor, const std::string& text) {
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t count = write(descriptor, text.data() + done, text.size() - done);
        if (count < 0 && errno != EINTR) return false;
        done += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    return true;
}

bool write_new_file(const std::string& path, const std::string& text, mode_t mode) {
    Descriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    return file.isOpen() && write_all(file.get(), text) && file.close();
}

std::string own_pid_line() { return std::to_string(getpid()) + "\n"; }

}  // namespace

bool read_all(const std::string& path, std::string& text) {
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.isOpen()) return false;
    text.clear();
    char buffer[4096];
    ssize_t count = 0;
    while ((count = read(file.get(), buffer, sizeof buffer)) > 0)
        text.append(buffer, static_cast<std::size_t>(count));
    return count == 0;
}

bool replace_file(const std::string& path, const std::string& text, mode_t mode) {
    const std::string fresh = path + ".new";
    unlink(fresh.c_str());
    if (write_new_file(fresh, text, mode) && std::rename(fresh.c_str(), path.c_str()) == 0)
        return true;
    const int reason = errno;
    unlink(fresh.c_str());
    errno = reason;
    return false;
}

bool write_pid_file(const std::string& path) {
    return replace_file(path, own_pid_line(), owner_only | S_IRGRP | S_IROTH);
}

void remove_pid_file(const std::string& path) {
    std::string text;
    if (read_all(path, text) && text == own_pid_line()) unlink(path.c_str());
}

CommandLog::CommandLog(std::string path) : path(std::move(path)) {}

void CommandLog::command(const std::string& line) const {
    const Descriptor file(
        open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, owner_only));
    write_all(file.get(), line + "\n");
}

void CommandLog::note(const std::string& text) const { command("# " + text); }
