#include "apply/server_process.h"

#include <pwd.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "apply/file_rewrite.h"
#include "apply/server_config.h"
#include "apply/server_session.h"
#include "apply/shell_command.h"
#include "wizard/base/host_facts.h"
#include "wizard/system/child_process.h"
#include "wizard/system/secret.h"
#include "wizard/system/signal_gate.h"

namespace {

// What server_read_pid() returns for a pid file that can't be opened.
constexpr int no_pid_file = 1;

InstallProfile& profile() { return install_profiles[os_kind]; }

// Whether the word of this file's owner, whom it stores, counts for processes of that user's.
bool is_believed(int file) {
    struct stat facts {};
    if (fstat(file, &facts) == -1) return false;
    server_session.pid_author = facts.st_uid;
    if (facts.st_uid == 0 || facts.st_uid == geteuid()) return true;
    const ServerAccount account = find_server_account();
    return account.exists && account.user == facts.st_uid;
}

// With the right of `user` alone: whether the process is that user's is then looked at in the same
// moment. Does not wait for a child that the user stops, and lets no signals in, as this may be the
// end of the wizard already.
bool terminate_as(uid_t user) {
    const pid_t child = fork();
    if (child == 0) {
        // That user may have it crash from setuid(2) on, which allows core dumps anew, prctl(2).
        sigset_t every;
        sigfillset(&every);
        sigprocmask(SIG_BLOCK, &every, nullptr);
        _exit(setuid(user) == 0 && kill(server_session.pid, SIGTERM) == 0 ? 0 : 1);
    }
    if (child == -1) return false;
    int status = -1;
    while (waitpid(child, &status, WUNTRACED) == child && WIFSTOPPED(status)) kill(child, SIGKILL);
    return status == 0;
}

}  // namespace

ServerAccount find_server_account() {
    ServerAccount account{};
    const auto look_up = [&] {
        const passwd* entry = getpwnam("teluma");
        if (entry != nullptr) account = {true, entry->pw_uid, entry->pw_gid};
    };
    ask_in_child(look_up, &account, sizeof(account));
    return account;
}

int server_read_pid() {
    const File file = open_original(profile().pid_file);
    if (file == nullptr && errno != EMLINK) return no_pid_file;
    if (file == nullptr) return server_session.pid = -1;
    char line[256];
    // After a read error the line may hold anything.
    if (std::fgets(line, sizeof(line), file.get()) == nullptr) line[0] = '\0';
    return server_session.pid = is_believed(fileno(file.get())) ? std::atoi(line) : -1;
}

int server_stop() {
    const pid_t pid = server_session.pid;
    const uid_t author = server_session.pid_author;
    // A number below 0 would mean a group of processes, or all there are.
    if (pid <= 0) return pid == 0 ? 0 : 1;
    const bool is_roots = author == 0 || author == geteuid();
    return (is_roots ? kill(pid, SIGTERM) == 0 : terminate_as(author)) ? 0 : 1;
}

int server_start() {
    return run_server_command(profile().server_binary + std::string(" >> /dev/null")) == -1 ? 1 : 0;
}

int server_set_admin_password(const char* password) {
    std::string quoted = in_double_quotes(password);
    std::string command = profile().server_binary;
    // One that outgrew its room would leave a piece of the password behind.
    command.reserve(command.size() + quoted.size() + shell_command_limit);
    command.append(" -A \"").append(quoted).append("\" >> /dev/null");
    const int status = run_server_command(command);
    wipe(quoted);
    wipe(command);
    return status == -1 ? 1 : 0;
}

int server_restart_with_password(const char* password) {
    if (server_read_pid() != no_pid_file && server_stop() != 0) return 1;
    while (server_read_pid() != no_pid_file) sleep_seconds(1);
    std::snprintf(profile().admin_password, sizeof(profile().admin_password), "%s", password);
    if (server_set_admin_password(password) != 0) return 1;
    config_prepare(profile().config_file);
    if (server_session.out_of_memory || server_start() != 0) return 1;
    server_read_pid();
    return 0;
}
