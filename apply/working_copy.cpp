#include "apply/working_copy.h"

#include "apply/shell_command.h"

namespace {

constexpr char name[] = "temp.cfg";

}  // namespace

std::FILE* working_copy_open() {
    return std::fopen(name, "w");
}

int working_copy_install(std::FILE* copy, bool complete, const char* path) {
    ShellCommand copy_back;
    ShellCommand remove;
    const bool written = std::ferror(copy) == 0;
    const bool closed = std::fclose(copy) == 0;
    const bool installs =
        complete && written && closed &&
        format_command(copy_back, "cp %s %s >> /dev/null", name, as_shell_word(path).c_str());
    if (installs)
        run_command(copy_back);
    if (format_command(remove, "rm %s >> /dev/null", name))
        run_command(remove);
    return installs ? 0 : 1;
}
