#include "apply/server_process.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "apply/server_config.h"
#include "apply/shell_command.h"
#include "apply/working_copy.h"
#include "wizard/install_profile.h"
#include "wizard/secret.h"
#include "wizard/signal_gate.h"

int server_pid = 0;

namespace {

// What server_read_pid() returns for a pid file that can't be opened.
constexpr int no_pid_file = 1;

InstallProfile& profile() {
    return install_profiles[os_kind];
}

}  // namespace

int server_read_pid() {
    std::FILE* file = open_original(profile().pid_file);
    if (file == nullptr)
        return no_pid_file;
    char line[256];
    // After a read error the line may hold anything.
    if (std::fgets(line, sizeof(line), file) == nullptr)
        line[0] = '\0';
    std::fclose(file);
    server_pid = std::atoi(line);
    return server_pid;
}

int server_stop() {
    if (server_pid == 0)
        return 0;
    // A number below 0 would mean a group of processes, or all there are.
    if (server_pid < 0)
        return 1;
    return kill(server_pid, SIGTERM) == -1 ? 1 : 0;
}

int server_start() {
    ShellCommand command;
    if (!format_command(command, "%s >> /dev/null", profile().server_binary))
        return 1;
    return run_server_command(command) == -1 ? 1 : 0;
}

int server_set_admin_password(const char* password) {
    std::string quoted = in_double_quotes(password);
    ShellCommand command;
    const bool fits = format_command(command, "%s -A \"%s\" >> /dev/null", profile().server_binary,
                                     quoted.c_str());
    const bool has_run = fits && run_server_command(command) != -1;
    wipe(quoted);
    wipe(command.text);
    return has_run ? 0 : 1;
}

int server_restart_with_password(const char* password) {
    if (server_read_pid() != no_pid_file && server_stop() != 0)
        return 1;
    while (server_read_pid() != no_pid_file)
        sleep_seconds(1);
    std::snprintf(profile().admin_password, sizeof(profile().admin_password), "%s", password);
    if (server_set_admin_password(password) != 0)
        return 1;
    config_prepare(profile().config_file);
    if (server_start() != 0)
        return 1;
    server_read_pid();
    return 0;
}
