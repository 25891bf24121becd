#include "pid_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include "files.h"

namespace standin {

namespace {

std::string own_line() {
    return std::to_string(getpid()) + "\n";
}

}  // namespace

bool write_pid_file(const std::string& path) {
    return write_file(path, own_line(), S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH);
}

void remove_pid_file(const std::string& path) {
    std::string text;
    if (read_file(path, text) && text == own_line()) {
        unlink(path.c_str());
    }
}

}  // namespace standin
