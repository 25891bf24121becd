#include "files.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "wizard/system/descriptor.h"

namespace standin {

namespace {

bool write_all(int descriptor, const std::string& text) {
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t count = write(descriptor, text.data() + done, text.size() - done);
        if (count < 0 && errno != EINTR) {
            return false;
        }
        done += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    return true;
}

bool write_new_file(const std::string& path, const std::string& text, mode_t mode) {
    Descriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    return file.isOpen() && write_all(file.get(), text) && file.close();
}

}  // namespace

bool read_file(const std::string& path, std::string& text) {
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.isOpen()) {
        return false;
    }
    text.clear();
    char buffer[4096];
    ssize_t count = 0;
    while ((count = read(file.get(), buffer, sizeof buffer)) > 0) {
        text.append(buffer, static_cast<std::size_t>(count));
    }
    return count == 0;
}

bool write_file(const std::string& path, const std::string& text, mode_t mode) {
    const std::string fresh = path + ".new";
    unlink(fresh.c_str());
    if (write_new_file(fresh, text, mode) && std::rename(fresh.c_str(), path.c_str()) == 0) {
        return true;
    }
    const int reason = errno;
    unlink(fresh.c_str());
    errno = reason;
    return false;
}

bool append_to_file(const std::string& path, const std::string& text) {
    const Descriptor file(
        open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, S_IRUSR | S_IWUSR));
    return file.isOpen() && write_all(file.get(), text);
}

}  // namespace standin
