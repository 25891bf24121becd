#include "wizard/system/private_directory.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "wizard/base/descriptor.h"

namespace {

struct PrivateDirectory {
    // Where the wizard was started: its path is empty where it has none or one that is longer than
    // a command may be.
    Descriptor started_in;
    std::string started_path;

    std::string path;  // absolute; empty while there is none
};

PrivateDirectory directory;

void remove_private_directory() {
    unlink("temp.cfg");
    if (fchdir(directory.started_in.get()) == 0) rmdir(directory.path.c_str());
}

Descriptor open_directory(const char* path) {
    return Descriptor(open(path, O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

bool make_directory_below(const char* parent) {
    std::string name = std::string(parent) + "/teluma-wizard.XXXXXX";
    if (mkdtemp(name.data()) == nullptr) return false;
    if (chdir(name.c_str()) != 0) {
        rmdir(name.c_str());
        return false;
    }
    directory.path = name;
    return true;
}

}  // namespace

void enter_private_directory() {
    static const char* const parents[] = {"/run", "/tmp", "/var/tmp"};
    const bool first = directory.path.empty();
    if (!directory.started_in.isOpen()) {
        char path[256];
        if (getcwd(path, sizeof(path)) != nullptr) directory.started_path = path;
        directory.started_in = open_directory(".");
    }
    // What can't be opened, as a home on another host, can't be come back to either.
    if (!directory.started_in.isOpen()) directory.started_in = open_directory("/");
    if (!directory.started_in.isOpen()) return;
    if (std::any_of(std::begin(parents), std::end(parents), make_directory_below) && first)
        std::atexit(remove_private_directory);
}

void leave_private_directory_in_child() {
    if (directory.started_in.isOpen() && fchdir(directory.started_in.get()) != 0) _exit(127);
}

std::string name_from_start(const std::string& name) {
    if (directory.path.empty() || name.empty() || name[0] == '/') return name;
    return directory.started_path[0] == '/' ? directory.started_path + "/" + name : "";
}
