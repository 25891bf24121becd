#include "apply/shell_command.h"

#include <unistd.h>

#include <cctype>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <functional>

#include "wizard/base/tel_help.h"
#include "wizard/system/child_process.h"
#include "wizard/system/private_directory.h"
#include "wizard/system/resource_limits.h"

namespace {

// Runs `command` by the shell in a child process that has called `prepare` first.
int run_by_shell(const ShellCommand& command, const std::function<void()>& prepare) {
    return run_in_child([&] {
        prepare();
        restore_limits_in_child();
        execl("/bin/sh", "sh", "-c", command.text, static_cast<char*>(nullptr));
        _exit(127);
    });
}

}  // namespace

bool format_command(ShellCommand& command, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(command.text, sizeof(command.text), format, arguments);
    va_end(arguments);
    return length >= 0 && static_cast<size_t>(length) < sizeof(command.text);
}

int run_server_command(const ShellCommand& command) {
    return run_by_shell(command, leave_private_directory_in_child);
}

int run_file_command(const ShellCommand& command, int only) {
    return run_by_shell(command, [only] {
        setpgid(0, 0);
        if (only != -1)
            confine_writing_in_child(only);
    });
}

std::string in_double_quotes(const char* text) {
    std::string quoted;
    // A password that outgrew its room would leave a piece of itself behind.
    quoted.reserve(2 * std::strlen(text));
    for (; *text != '\0'; ++text) {
        if (std::strchr("\"$`\\", *text) != nullptr)
            quoted += '\\';
        quoted += *text;
    }
    return quoted;
}

std::string as_shell_word(const char* name) {
    bool plain = *name != '\0';
    // A name that begins with a dash would be taken for an option.
    const std::string directory = *name == '-' ? "./" : "";
    std::string quoted = "'" + directory;
    for (const char* at = name; *at != '\0'; ++at) {
        const bool harmless = std::isalnum(static_cast<unsigned char>(*at)) != 0 ||
                              std::strchr("/._+,:@%-", *at) != nullptr;
        plain = plain && harmless;
        quoted += *at == '\'' ? "'\\''" : std::string(1, *at);
    }
    return plain ? directory + name : quoted + "'";
}
