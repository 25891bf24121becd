#include "wizard/system/private_directory.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <initializer_list>

namespace {

// Descriptor of the directory that the wizard was started in.
int started_in = -1;

// Its path, "" where it has none or one that is longer than a command may be.
char started_path[256];

// Absolute path of the private directory; empty while there is none.
std::string private_directory;

void remove_private_directory() {
    unlink("temp.cfg");
    if (fchdir(started_in) == 0)
        rmdir(private_directory.c_str());
}

bool make_directory_below(const char* parent) {
    std::string name = std::string(parent) + "/teluma-wizard.XXXXXX";
    if (mkdtemp(name.data()) == nullptr)
        return false;
    if (chdir(name.c_str()) != 0) {
        rmdir(name.c_str());
        return false;
    }
    private_directory = name;
    return true;
}

// Returns false when the directory that the wizard was started in can't be opened.
bool remember_start() {
    if (started_in != -1)
        return true;
    if (getcwd(started_path, sizeof(started_path)) == nullptr)
        started_path[0] = '\0';
    started_in = open(".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    return started_in != -1;
}

}  // namespace

void enter_private_directory() {
    const bool first = private_directory.empty();
    if (!remember_start())
        return;
    for (const char* parent : {"/tmp", "/var/tmp", "/run"}) {
        if (make_directory_below(parent)) {
            if (first)
                std::atexit(remove_private_directory);
            return;
        }
    }
}

void leave_private_directory_in_child() {
    if (started_in != -1 && fchdir(started_in) != 0)
        _exit(127);
}

std::string name_from_start(const std::string& name) {
    if (private_directory.empty() || name.empty() || name[0] == '/')
        return name;
    return started_path[0] == '/' ? started_path + ("/" + name) : "";
}
