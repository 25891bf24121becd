#include "apply/shell_command.h"

#include <unistd.h>

#include <cctype>
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "wizard/signal_gate.h"

bool format_command(ShellCommand& command, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(command.text, sizeof(command.text), format, arguments);
    va_end(arguments);
    return length >= 0 && static_cast<size_t>(length) < sizeof(command.text);
}

int run_command(const ShellCommand& command) {
    const pid_t child = fork();
    if (child == 0) {
        restore_signals_in_child();
        execl("/bin/sh", "sh", "-c", command.text, static_cast<char*>(nullptr));
        _exit(127);
    }
    return child == -1 ? -1 : wait_for_child(child);
}

std::string in_double_quotes(const char* text) {
    std::string quoted;
    for (; *text != '\0'; ++text) {
        if (std::strchr("\"$`\\", *text) != nullptr)
            quoted += '\\';
        quoted += *text;
    }
    return quoted;
}

std::string as_shell_word(const char* name) {
    bool plain = *name != '\0';
    std::string quoted = "'";
    for (const char* at = name; *at != '\0'; ++at) {
        const bool harmless = std::isalnum(static_cast<unsigned char>(*at)) != 0 ||
                              std::strchr("/._+,:@%-", *at) != nullptr;
        plain = plain && harmless;
        quoted += *at == '\'' ? "'\\''" : std::string(1, *at);
    }
    return plain ? name : quoted + "'";
}
