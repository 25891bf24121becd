#include "apply/shell_command.h"

#include <unistd.h>

#include <cstring>
#include <functional>

#include "wizard/base/tel_help.h"
#include "wizard/system/child_process.h"
#include "wizard/system/private_directory.h"
#include "wizard/system/resource_limits.h"

namespace {

// Runs `command` by the shell in a child process that has called `prepare` first.
int run_by_shell(const std::string& command, const std::function<void()>& prepare) {
    if (command.size() > shell_command_limit) return -1;
    return run_in_child([&] {
        prepare();
        restore_limits_in_child();
        execl("/bin/sh", "sh", "-c", command.c_str(), static_cast<char*>(nullptr));
        _exit(127);
    });
}

}  // namespace

int run_server_command(const std::string& command) {
    return run_by_shell(command, leave_private_directory_in_child);
}

int run_file_command(const std::string& command, int only) {
    return run_by_shell(command, [only] {
        setpgid(0, 0);
        if (only != -1) confine_writing_in_child(only);
    });
}

std::string in_double_quotes(const char* text) {
    std::string quoted;
    // A password that outgrew its room would leave a piece of itself behind.
    quoted.reserve(2 * std::strlen(text));
    for (; *text != '\0'; ++text) {
        if (std::strchr("\"$`\\", *text) != nullptr) quoted += '\\';
        quoted += *text;
    }
    return quoted;
}

std::string as_shell_word(const char* name) {
    constexpr char harmless[] =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789/._+,:@%-";
    // A name that begins with a dash would be taken for an option.
    std::string word = (*name == '-' ? "./" : "") + std::string(name);
    if (!word.empty() && word.find_first_not_of(harmless) == std::string::npos) return word;
    for (size_t at = word.find('\''); at != std::string::npos; at = word.find('\'', at + 4))
        word.replace(at, 1, "'\\''");
    return "'" + word + "'";
}
